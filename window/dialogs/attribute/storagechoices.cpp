#include "window/dialogs/attribute/storagechoices.h"

#include "qrb/pointattribute.h"
#include "window/common/attributewords.h"

#include <QComboBox>
#include <QObject>

namespace tarvo::window {

namespace {

using qrb::pointcloud::PointAttribute;

struct Choice {
    int value;
    const char* meaning;
};

constexpr Choice storageClasses[] = {
    {PointAttribute::CONSTANT,
     QT_TRANSLATE_NOOP("QObject", "One value for all points, stored once.")},
    {PointAttribute::VARIABLE,
     QT_TRANSLATE_NOOP("QObject",
                       "A value per point that seldom changes: stored in blocks together "
                       "with other attributes.")},
    {PointAttribute::DYNAMIC,
     QT_TRANSLATE_NOOP("QObject",
                       "A value per point that changes often, such as a selection: stored in "
                       "blocks of its own, so that a change leaves no dead bytes behind.")},
};
constexpr Choice compressions[] = {
    {PointAttribute::DEFAULT,
     QT_TRANSLATE_NOOP("QObject", "What suits the values of a block best.")},
    {PointAttribute::DELTA,
     QT_TRANSLATE_NOOP("QObject",
                       "Differences of neighbouring points: for values that change little from "
                       "point to point, such as times.")},
    {PointAttribute::SHUFFLE,
     QT_TRANSLATE_NOOP("QObject",
                       "Bytes of equal weight side by side: for numbers of many bytes whose "
                       "upper ones change little.")},
    {PointAttribute::DELTA_SHUFFLE,
     QT_TRANSLATE_NOOP("QObject", "Differences, and their bytes of equal weight side by side.")},
};

template <typename Choices, typename NameOf>
void fillChoices(QComboBox* list, const Choices& choices, NameOf nameOf) {
    QStringList explained;
    for (const Choice& choice : choices) {
        const QString name = nameOf(static_cast<std::uint8_t>(choice.value));
        list->addItem(name, choice.value);
        const QString meaning = QObject::tr(choice.meaning);
        list->setItemData(list->count() - 1, meaning, Qt::ToolTipRole);
        explained += QString("<p><b>%0</b>: %1</p>").arg(name, meaning);
    }
    list->setToolTip("<html>" + explained.join("") + "</html>");
}

}  // namespace

void fillStorageClasses(QComboBox* list) {
    fillChoices(list, storageClasses, storageClassText);
}

void fillCompressions(QComboBox* list) {
    fillChoices(list, compressions, compressionText);
}

void chooseValue(QComboBox* list, int value) {
    int index = list->findData(value);
    if (index < 0) {
        index = list->count();
        list->addItem(QObject::tr("unknown (%0)").arg(value), value);
    }
    list->setCurrentIndex(index);
}

}  // namespace tarvo::window
