#include "window/view/viewcontrols.h"

#include "numbers/numbertext.h"
#include "window/common/localnumbers.h"
#include "window/common/programsettings.h"
#include "window/common/textformat.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>
#include <algorithm>

namespace tarvo::window {

namespace {

const char* const settingsGroup = "PointCloudView";
const char* const colourKey = "Colour";
const char* const filterKey = "Filter";
const char* const sizeKey = "PointSize";
const char* const groundKey = "Ground";
constexpr int usualSize = 2;  // pixels
constexpr int largestSize = 10;

QString nameOf(const view::ColourChoice& choice, const std::string& text) {
    switch (choice.by) {
        case view::ColourBy::TrueColour:
            return QObject::tr("True colours");
        case view::ColourBy::Height:
            return QObject::tr("Height");
        case view::ColourBy::Level:
            return QObject::tr("Level of the node");
        case view::ColourBy::Transaction:
            return QObject::tr("Transaction of the node");
        default:
            return oneLine(QString::fromStdString(text));
    }
}

// Nothing where the field is empty or holds no number.
std::optional<double> numberIn(const QLineEdit* field) {
    return numbers::readNumber(withPoint(field->text()).toStdString());
}

void name(QWidget* widget, const char* objectName, const QString& accessibleName,
          const QString& toolTip) {
    widget->setObjectName(objectName);
    widget->setAccessibleName(accessibleName);
    widget->setToolTip(plainToolTip(toolTip));
}

// Room for a word or two: the list is as wide as its entries.
void narrow(QComboBox* combo, int characters) {
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(characters);
}

}  // namespace

ViewControls::ViewControls(QWidget* parent)
    : QWidget(parent),
      m_colour(new QComboBox(this)),
      m_low(new QLineEdit(this)),
      m_high(new QLineEdit(this)),
      m_filter(new QComboBox(this)),
      m_size(new QSpinBox(this)),
      m_ground(new QComboBox(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    createColour();
    createLook();
    addRow({m_colour, m_low, m_high}, tr("Colours:"), m_colour);
    addRow({m_filter, m_size, m_ground}, tr("Filter:"), m_filter);
    clear();
}

void ViewControls::addRow(const QList<QWidget*>& widgets, const QString& label, QWidget* buddy) {
    auto* row = new QHBoxLayout;
    auto* text = new QLabel(label, this);
    text->setBuddy(buddy);
    row->addWidget(text);
    for (QWidget* widget : widgets)
        row->addWidget(widget, widget == buddy ? 2 : 1);
    static_cast<QBoxLayout*>(layout())->addLayout(row);
}

void ViewControls::createColour() {
    name(m_colour, "comboViewColour", tr("Colours"), tr("What the colours of the points mean"));
    narrow(m_colour, 8);
    name(m_low, "editViewLow", tr("Low end of the colours"),
         tr("Value at the dark end of the colours; empty: the least of all points"));
    name(m_high, "editViewHigh", tr("High end of the colours"),
         tr("Value at the bright end of the colours; empty: the greatest of all points"));
    connect(m_colour, qOverload<int>(&QComboBox::activated), this, [this] {
        // Numbers of another attribute have another range.
        m_low->clear();
        m_high->clear();
        keep(colourKey, m_colour->currentData().toString());
        emit colourChanged();
    });
    for (QLineEdit* field : {m_low, m_high}) {
        field->setMinimumWidth(field->fontMetrics().horizontalAdvance("-12345.6") + 10);
        connect(field, &QLineEdit::textChanged, field, [field] {
            field->setProperty("invalid", !field->text().trimmed().isEmpty() && !numberIn(field));
            field->setStyleSheet(field->styleSheet());
        });
        connect(field, &QLineEdit::editingFinished, this, &ViewControls::colourChanged);
    }
}

void ViewControls::createLook() {
    name(m_filter, "comboViewFilter", tr("Filter"),
         tr("What becomes of the points that do not pass the filter of \"Point Data\"; it counts "
            "as it stands when it is chosen here, or run there"));
    m_filter->addItems({tr("All points"), tr("Hide the rest"), tr("Fade the rest")});
    narrow(m_filter, 8);
    name(m_size, "spinViewPointSize", tr("Size of the points"),
         tr("How large the points are, in pixels"));
    m_size->setRange(1, largestSize);
    m_size->setSuffix(tr(" px"));
    name(m_ground, "comboViewGround", tr("Ground"), tr("The colour behind the points"));
    m_ground->addItems({tr("Theme"), tr("Light"), tr("Dark")});
    narrow(m_ground, 5);
    const ProgramSettings settings(settingsGroup);
    m_filter->setCurrentIndex(std::clamp(settings.value(filterKey).toInt(), 0, 2));
    m_size->setValue(settings.value(sizeKey, usualSize).toInt());
    m_ground->setCurrentIndex(std::clamp(settings.value(groundKey).toInt(), 0, 2));
    connect(m_filter, qOverload<int>(&QComboBox::activated), this, [this](int index) {
        keep(filterKey, index);
        emit filterUseChanged();
    });
    connect(m_size, &QSpinBox::valueChanged, this, [this](int pixels) {
        keep(sizeKey, pixels);
        emit pointSizeChanged(pixels);
    });
    connect(m_ground, qOverload<int>(&QComboBox::activated), this, [this](int index) {
        keep(groundKey, index);
        emit groundChanged();
    });
}

void ViewControls::keep(const QString& key, const QVariant& value) {
    ProgramSettings(settingsGroup).setValue(key, value);
}

void ViewControls::setChoices(const view::StreamScene& scene) {
    const QString kept = ProgramSettings(settingsGroup).value(colourKey).toString();
    const QString shown = m_choices.empty() ? kept : m_colour->currentData().toString();
    m_choices = scene.choices;
    m_colour->clear();
    for (std::size_t i = 0; i < m_choices.size(); ++i)
        m_colour->addItem(nameOf(m_choices[i], scene.choiceTexts[i]),
                          QString::fromStdString(scene.choiceTexts[i]));
    m_colour->setCurrentIndex(std::max(m_colour->findData(shown), 0));
    m_colour->setEnabled(true);
}

void ViewControls::setRange(const view::Colouring& colouring) {
    const bool isRamp = colouring.isRamp();
    if (isRamp && !colouring.choice().range)
        m_usual = colouring.range();
    const auto places = [](double value) {
        return localNumber(QString::fromStdString(numbers::roundedText(value, 7)));
    };
    m_low->setPlaceholderText(isRamp ? places(m_usual.low) : QString());
    m_high->setPlaceholderText(isRamp ? places(m_usual.high) : QString());
    m_low->setEnabled(isRamp);
    m_high->setEnabled(isRamp);
}

void ViewControls::clear() {
    m_choices.clear();
    m_colour->clear();
    m_colour->setEnabled(false);
    for (QLineEdit* field : {m_low, m_high}) {
        field->clear();
        field->setPlaceholderText({});
        field->setEnabled(false);
    }
}

std::optional<view::ColourChoice> ViewControls::colour() const {
    const int index = m_colour->currentIndex();
    if (index < 0 || index >= static_cast<int>(m_choices.size()))
        return std::nullopt;
    view::ColourChoice choice = m_choices[static_cast<std::size_t>(index)];
    const auto low = numberIn(m_low);
    const auto high = numberIn(m_high);
    if (index == 0 && !low && !high)
        return std::nullopt;
    if (low || high)
        choice.range = drawing::Range{low.value_or(m_usual.low), high.value_or(m_usual.high)};
    return choice;
}

FilterUse ViewControls::filterUse() const {
    return static_cast<FilterUse>(m_filter->currentIndex());
}

Ground ViewControls::ground() const {
    return static_cast<Ground>(m_ground->currentIndex());
}

int ViewControls::pointSize() const {
    return m_size->value();
}

}  // namespace tarvo::window
