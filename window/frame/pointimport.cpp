#include "window/frame/pointimport.h"

#include "exchange/import/importrun.h"
#include "exchange/table/columnmap.h"
#include "exchange/table/shapedsource.h"
#include "window/common/aside.h"
#include "window/common/guard.h"
#include "window/common/messageboxes.h"
#include "window/common/messages.h"
#include "window/common/textformat.h"
#include "window/frame/importfiles.h"
#include "window/frame/openwindows.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <memory>
#include <utility>

namespace tarvo::window {

namespace {

class PointImport {
public:
    PointImport(const QStringList& fileNames, const DatabaseSession& session, QWidget* parent)
        : m_session(session), m_parent(parent) {
        m_findings.fileNames = fileNames;
        const QFileInfo first(fileNames.value(0));
        m_wish.location = QDir::toNativeSeparators(
            first.absoluteDir().filePath(first.completeBaseName() + ".qrbx"));
    }

    ImportOutcome run(const ImportTarget& target) {
        look();
        m_wish.intoOpen = target.isMeant && target.refusal.isEmpty();
        ImportOutcome outcome;
        bool done = false;
        while (!done && DialogImportPoints::edit(m_findings, target, m_wish, m_parent))
            guarded(m_parent, [&] { done = m_wish.intoOpen ? append(outcome) : create(outcome); });
        return outcome;
    }

private:
    // Opens the files and reads their points once.
    void look() {
        for (const QString& name : m_findings.fileNames)
            // Closing it again would drop the locks of a database that is open.
            if (m_session.context.databaseFileTypeCheck(name.toStdString()))
                throw core::Failure(
                    QObject::tr("\"%1\" is a database.").arg(name).toStdString(),
                    QObject::tr(
                        "Open it, and export its points into a new database or another format.")
                        .toStdString());
        workAside(
            m_parent, QObject::tr("Reading the points ..."),
            [this](const StepProgress& progress) { m_files.read(m_findings.fileNames, progress); });
        m_files.describe(m_findings);
    }

    // The files as the user wants them to come in.
    ImportFiles::Mapped chosen(const StepProgress& progress) const {
        ImportFiles::Mapped files = m_files.mapped(m_wish.map);
        files.sources = exchange::shaped(
            std::move(files.sources), m_wish.shape.shape(),
            [progress] { progress(QObject::tr("Choosing points").toStdString(), 0); });
        return files;
    }

    std::string settings() const {
        QStringList inputs;
        for (const QString& name : m_findings.fileNames)
            inputs += QFileInfo(name).fileName();
        QStringList map;
        for (const exchange::ColumnChoice& choice : m_wish.map)
            map += QString::fromStdString(exchange::choiceText(choice));
        QJsonObject settings{{"command", "import"},
                             {"inputs", QJsonArray::fromStringList(inputs)},
                             {"map", QJsonArray::fromStringList(map)},
                             {"new_ids", m_wish.newIds},
                             {"crs_as_is", m_wish.asTheyAre}};
        if (m_wish.intoOpen)
            settings.insert("round", m_wish.round);
        const core::Shape shape = m_wish.shape.shape();
        if (shape.bounds)
            settings.insert("bounds", m_wish.shape.bounds);
        if (shape.every > 1)
            settings.insert("every", m_wish.shape.every);
        if (shape.distance > 0)
            settings.insert("thin", shape.distance);
        return QJsonDocument(settings).toJson(QJsonDocument::Compact).toStdString();
    }

    exchange::ImportListener listener(const StepProgress& progress) {
        m_notes.clear();
        return {progress, [this](const std::vector<std::string>& notes) {
                    m_notes += translatedMessages(notes);
                }};
    }

    // Whether it was done; not if the user wants to keep the file that is there.
    bool create(ImportOutcome& outcome) {
        const QString location =
            QDir::toNativeSeparators(QFileInfo(m_wish.location).absoluteFilePath());
        const std::string place = location.toStdString();
        const bool exists = QFileInfo::exists(location);
        if (exists) {
            refuseOpenDatabase(location, m_session);
            // Another file is refused anyway.
            if (m_session.context.databaseFileTypeCheck(place) &&
                !lossConfirmed(
                    m_parent,
                    QObject::tr("The file \"%0\" exists already.\nReplace it?").arg(location)))
                return false;
        }
        // What was written is removed on every exit but publish().
        core::NewDatabase database(m_session.context, place, exists);
        std::uint64_t points = 0;
        workAside(m_parent, QObject::tr("Importing points ..."), [&](const StepProgress& progress) {
            const ImportFiles::Mapped files = chosen(progress);
            points =
                importIntoNew(database, place, files.sources, m_findings.plan(m_wish.map),
                              exchange::commonOrigin(files.sources, nullptr, {}, m_wish.asTheyAre),
                              {ImportFiles::primary, {}, m_wish.newIds},
                              {"Import", transactionAgentText().toStdString(), {}, settings(), {}},
                              listener(progress));
            // The last chance to cancel: the file isn't in its place yet.
            progress(QObject::tr("Writing %1").arg(location).toStdString(), 1);
        });
        database.publish();
        if (confirmed(m_parent, doneText(points) + notesText() + "\n\n" +
                                    QObject::tr("Open the new database?")))
            outcome.opened = location;
        return true;
    }

    bool append(ImportOutcome& outcome) {
        const qrb::Pointcloud& cloud = *m_session.database;
        const std::string fileName = m_session.fileName.toStdString();
        exchange::Appended added;
        workAside(m_parent, QObject::tr("Importing points ..."), [&](const StepProgress& progress) {
            qrb::pointcloud::TransactionGuard transaction(
                m_session.database->transactions(), "Import", transactionAgentText().toStdString(),
                {}, settings());
            exchange::AppendOptions options;
            options.round = m_wish.round;
            options.newIds = m_wish.newIds;
            options.crsAsIs = m_wish.asTheyAre;
            const ImportFiles::Mapped files = chosen(progress);
            added = appendPoints(cloud, fileName, files.sources, options, listener(progress),
                                 files.surveys);
            transaction.commit({}, [&](int percent) {
                progress(QObject::tr("Writing %1").arg(m_session.fileName).toStdString(),
                         percent / 100.0);
            });
        });
        outcome.changed = true;
        const QString rounded =
            added.rounded == 0
                ? QString()
                : '\n' + QObject::tr("%0 values rounded.")
                             .arg(QLocale().toString(static_cast<qulonglong>(added.rounded)));
        showInformation(m_parent, doneText(added.points) + rounded, m_notes.join('\n'));
        return true;
    }

    static QString doneText(std::uint64_t points) {
        return points == 1 ? QObject::tr("One point imported.")
                           : QObject::tr("%0 points imported.")
                                 .arg(QLocale().toString(static_cast<qulonglong>(points)));
    }

    // What the dialog has shown needs no saying again.
    QString notesText() const {
        QStringList fresh;
        const QStringList shown =
            m_findings.notes + translatedMessages(m_findings.plan(m_wish.map).notes);
        for (const QString& note : m_notes)
            if (!shown.contains(note))
                fresh += note;
        return fresh.isEmpty() ? QString() : "\n\n" + fresh.join('\n');
    }

    const DatabaseSession& m_session;
    QWidget* m_parent;
    ImportFiles m_files;
    ImportFindings m_findings;
    ImportWish m_wish;
    QStringList m_notes;  // of the import that was made last
};

}  // namespace

ImportOutcome importPoints(const QStringList& fileNames, const DatabaseSession& session,
                           const ImportTarget& target, QWidget* parent) {
    return PointImport(fileNames, session, parent).run(target);
}

}  // namespace tarvo::window
