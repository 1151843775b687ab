#include "window/panels/formatexport.h"

#include "core/outputplace.h"
#include "exchange/export/exportpoints.h"
#include "window/common/aside.h"
#include "window/common/messageboxes.h"
#include "window/common/messages.h"
#include "window/common/textformat.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLocale>
#include <algorithm>
#include <iterator>

namespace tarvo::window {

namespace {

struct FileType {
    const char* text;
    const char* extension;
};
constexpr FileType fileTypes[] = {
    {QT_TRANSLATE_NOOP("QObject", "LAS (*.las)"), "las"},
    {QT_TRANSLATE_NOOP("QObject", "LAZ, compressed LAS (*.laz)"), "laz"},
    {QT_TRANSLATE_NOOP("QObject", "PLY (*.ply)"), "ply"},
    {QT_TRANSLATE_NOOP("QObject", "XYZ, a text of numbers (*.xyz)"), "xyz"},
};

const FileType& typeOf(const QString& text) {
    const auto* const found = std::ranges::find_if(
        fileTypes, [&](const FileType& type) { return text == QObject::tr(type.text); });
    return found == std::end(fileTypes) ? fileTypes[0] : *found;
}

// Lets the name follow the type that is chosen: the format is what the extension says.
void followType(QFileDialog& dialog) {
    dialog.setDefaultSuffix(typeOf(dialog.selectedNameFilter()).extension);
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& text) {
        const QString extension = typeOf(text).extension;
        dialog.setDefaultSuffix(extension);
        const QFileInfo chosen(dialog.selectedFiles().value(0));
        if (!chosen.isDir() && exchange::formatOfFile(chosen.fileName().toStdString()))
            dialog.selectFile(chosen.completeBaseName() + '.' + extension);
    });
}

// The name that the user wants, with an extension that tells the format; empty: none.
QString chosenPlace(const QString& proposed, QWidget* parent) {
    QStringList texts;
    for (const FileType& type : fileTypes)
        texts += QObject::tr(type.text);
    QFileDialog dialog(parent, QObject::tr("Export Points"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilters(texts);
    dialog.setDirectory(QFileInfo(proposed).path());
    dialog.selectFile(QFileInfo(proposed).fileName());
    followType(dialog);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    const QString name = dialog.selectedFiles().value(0);
    if (name.isEmpty() || exchange::formatOfFile(name.toStdString()))
        return name;
    const QString place = name + '.' + typeOf(dialog.selectedNameFilter()).extension;
    // The file dialog has asked for the other name.
    if (QFileInfo::exists(place) &&
        !lossConfirmed(parent, QObject::tr("The file \"%0\" exists already.\nReplace it?")
                                   .arg(QDir::toNativeSeparators(place))))
        return {};
    return place;
}

std::vector<std::string> namesOf(const QStringList& texts) {
    std::vector<std::string> names;
    for (const QString& text : texts)
        names.push_back(text.toStdString());
    return names;
}

}  // namespace

void exportPointsAs(const DatabaseSession& session, const core::PointSelection& selection,
                    const QStringList& attributes, QWidget* parent) {
    const QFileInfo database(session.fileName);
    const QString name =
        chosenPlace(database.dir().filePath(database.completeBaseName() + ".las"), parent);
    if (name.isEmpty())
        return;
    const std::string fileName = session.fileName.toStdString();
    core::checkOutputPlace(session.context, name.toStdString(), {fileName}, core::OutputKind::Scan);
    exchange::ExportOptions options;
    options.format = *exchange::formatOfFile(name.toStdString());
    files::WholeFile file(name.toStdString());
    exchange::Exported exported;
    workAside(parent, QObject::tr("Exporting points ..."), session.context,
              [&](const StepProgress& progress) {
                  exchange::database::DatabaseSource source(*session.database, fileName, selection,
                                                            namesOf(attributes));
                  exported =
                      exchange::exportPoints(source, source.formats(), options, file, progress);
                  progress(QObject::tr("Writing %1").arg(name).toStdString(),
                           1);  // the last chance to cancel
              });
    // A filter that was mistyped must not cost last week's export.
    if (exported.points == 0 && file.replaces()) {
        showInformation(parent, QObject::tr("No points are selected; \"%0\" was left as it was.")
                                    .arg(QDir::toNativeSeparators(name)));
        return;
    }
    file.publish();
    showInformation(parent,
                    exported.points == 1
                        ? QObject::tr("One point exported.")
                        : QObject::tr("%0 points exported.")
                              .arg(QLocale().toString(static_cast<qulonglong>(exported.points))),
                    translatedMessages(exported.notes).join('\n'));
}

}  // namespace tarvo::window
