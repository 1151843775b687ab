#include "window/panels/formatexport.h"

#include "core/outputplace.h"
#include "exchange/export/exportpoints.h"
#include "window/common/aside.h"
#include "window/common/messageboxes.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLocale>
#include <algorithm>

namespace tarvo::window {

namespace {

const QStringList& fileTypes() {
    static const QStringList types = {"LAS (*.las)", "LAZ, compressed LAS (*.laz)", "PLY (*.ply)",
                                      "XYZ, a text of numbers (*.xyz)"};
    return types;
}

constexpr const char* extensions[] = {".las", ".laz", ".ply", ".xyz"};

// The name that the user wants, with an extension that tells the format; empty: none.
QString chosenPlace(const QString& proposed, QWidget* parent) {
    QString type = fileTypes().first();
    const QString name = QFileDialog::getSaveFileName(parent, "Export Points", proposed,
                                                      fileTypes().join(";;"), &type);
    if (name.isEmpty() || exchange::formatOfFile(name.toStdString()))
        return name;
    const QString place = name + extensions[std::max<qsizetype>(fileTypes().indexOf(type), 0)];
    // The file dialog has asked for the other name.
    if (QFileInfo::exists(place) &&
        !lossConfirmed(parent, QString("The file \"%0\" exists already.\nReplace it?")
                                   .arg(QDir::toNativeSeparators(place))))
        return {};
    return place;
}

// The advice of the export speaks of the options that qrbtool has for it.
core::Failure inWindowWords(const core::Failure& failure) {
    std::string details = failure.details();
    if (details.find("--attributes") != std::string::npos)
        details += "\nHere the attributes are those whose columns are shown.";
    if (details.find("--scale") != std::string::npos)
        details += "\n--scale is an option of \"qrbtool export\".";
    return core::Failure(failure.what(), details);
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
    const QString name = chosenPlace(session.fileName + extensions[0], parent);
    if (name.isEmpty())
        return;
    const std::string fileName = session.fileName.toStdString();
    core::checkOutputPlace(session.context, name.toStdString(), {fileName}, core::OutputKind::Scan);
    exchange::ExportOptions options;
    options.format = *exchange::formatOfFile(name.toStdString());
    files::WholeFile file(name.toStdString());
    exchange::Exported exported;
    try {
        workAside(parent, "Exporting points ...", session.context,
                  [&](const StepProgress& progress) {
                      exchange::database::DatabaseSource source(*session.database, fileName,
                                                                selection, namesOf(attributes));
                      exported =
                          exchange::exportPoints(source, source.formats(), options, file, progress);
                      progress("Writing " + name.toStdString(), 1);  // the last chance to cancel
                  });
    } catch (const core::Failure& failure) {
        throw inWindowWords(failure);
    }
    // A filter that was mistyped must not cost last week's export.
    if (exported.points == 0 && file.replaces()) {
        showInformation(parent, QString("No points are selected; \"%0\" was left as it was.")
                                    .arg(QDir::toNativeSeparators(name)));
        return;
    }
    file.publish();
    QStringList notes;
    for (const std::string& note : exported.notes)
        notes += QString::fromStdString(note);
    showInformation(parent,
                    exported.points == 1
                        ? QString("One point exported.")
                        : QString("%0 points exported.")
                              .arg(QLocale().toString(static_cast<qulonglong>(exported.points))),
                    notes.join('\n'));
}

}  // namespace tarvo::window
