#include "window/frame/pointimport.h"

#include "exchange/format.h"
#include "exchange/import/importrun.h"
#include "exchange/sourceopener.h"
#include "exchange/table/columntarget.h"
#include "window/common/aside.h"
#include "window/common/guard.h"
#include "window/common/messageboxes.h"
#include "window/common/textformat.h"
#include "window/frame/openwindows.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QRegularExpression>
#include <set>
#include <utility>

namespace tarvo::window {

namespace {

constexpr const char* primary = "tarvo.xyz";

std::set<std::string> namesOf(const QStringList& texts) {
    std::set<std::string> names;
    for (const QString& text : texts)
        names.insert(text.toStdString());
    return names;
}

QStringList listOf(const std::vector<std::string>& texts) {
    QStringList list;
    for (const std::string& text : texts)
        list += QString::fromStdString(text);
    return list;
}

// The advice of the import speaks of the options that qrbtool has for it.
core::Failure inWindowWords(const core::Failure& failure) {
    static const std::pair<const char*, const char*> words[] = {
        {"Give --new-ids to number the points anew.", "Check \"Number the points anew\"."},
        {"give --crs-as-is to take coordinates and times as they are",
         "check that they are taken as they are"},
        {"Give --round to store the nearest values.", "Check that values are rounded."},
    };
    QString details = QString::fromStdString(failure.details());
    for (const auto& [option, box] : words)
        details.replace(option, box);
    static const QRegularExpression leaveOut("Give --leave-out (\\S+) to do without (it|times)");
    details.replace(leaveOut, "Uncheck \\1 to do without \\2");
    if (details.contains("--columns"))
        details += "\n(--columns is an option of \"qrbtool import\".)";
    return core::Failure(failure.what(), details.toStdString());
}

// The work on another thread, its failures in words of the window.
void work(QWidget* parent, const QString& text,
          const std::function<void(const StepProgress&)>& job) {
    try {
        workAside(parent, text, job);
    } catch (const core::Failure& failure) {
        throw inWindowWords(failure);
    }
}

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
                    "\"" + name.toStdString() + "\" is a database.",
                    "Open it, and export its points into a new database or another format.");
        work(m_parent, "Reading the points ...", [this](const StepProgress& progress) {
            exchange::SourceOpener opener;
            for (const QString& name : m_findings.fileNames) {
                const std::string fileName = name.toStdString();
                const std::string step = "Opening " + fileName;
                progress(step, 0);
                m_sources.push_back(
                    opener.open(fileName, [&](double fraction) { progress(step, fraction); }));
            }
            m_findings.plan = exchange::planImport(m_sources, primary, progress);
            lookAtOrigin();
        });
    }

    // What differs can still be left out or taken as it is.
    void lookAtOrigin() {
        try {
            (void)exchange::commonOrigin(m_sources, nullptr, {}, false);
        } catch (const core::Failure& failure) {
            m_findings.notes += QString::fromUtf8(failure.what());
        }
        const auto common = exchange::commonOrigin(m_sources, nullptr, {}, true);
        m_findings.notes += listOf(common.notes);
        if (common.origin.system)
            m_findings.system = QString::fromStdString(core::describe(*common.origin.system));
    }

    std::string settings() const {
        QStringList inputs;
        for (const QString& name : m_findings.fileNames)
            inputs += QFileInfo(name).fileName();
        QJsonObject settings{{"command", "import"},
                             {"inputs", QJsonArray::fromStringList(inputs)},
                             {"left_out", QJsonArray::fromStringList(m_wish.leftOut)},
                             {"new_ids", m_wish.newIds},
                             {"crs_as_is", m_wish.asTheyAre}};
        if (m_wish.intoOpen)
            settings.insert("round", m_wish.round);
        return QJsonDocument(settings).toJson(QJsonDocument::Compact).toStdString();
    }

    exchange::ImportListener listener(const StepProgress& progress) {
        m_notes.clear();
        return {progress,
                [this](const std::vector<std::string>& notes) { m_notes += listOf(notes); }};
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
                    QString("The file \"%0\" exists already.\nReplace it?").arg(location)))
                return false;
        }
        // What was written is removed on every exit but publish().
        core::NewDatabase database(m_session.context, place, exists);
        work(m_parent, "Importing points ...", [&](const StepProgress& progress) {
            const std::set<std::string> leftOut = namesOf(m_wish.leftOut);
            importIntoNew(database, place, m_sources, m_findings.plan,
                          exchange::commonOrigin(m_sources, nullptr, leftOut, m_wish.asTheyAre),
                          {primary, leftOut, m_wish.newIds && !leftOut.contains("tarvo.id")},
                          {"Import", transactionAgentText().toStdString(), {}, settings(), {}},
                          listener(progress));
            // The last chance to cancel: the file isn't in its place yet.
            progress("Writing " + place, 1);
        });
        database.publish();
        if (confirmed(m_parent, QString("%0%1\n\nOpen the new database?")
                                    .arg(doneText(m_findings.plan.pointCount), notesText())))
            outcome.opened = location;
        return true;
    }

    bool append(ImportOutcome& outcome) {
        const qrb::Pointcloud& cloud = *m_session.database;
        const std::string fileName = m_session.fileName.toStdString();
        exchange::Appended added;
        work(m_parent, "Importing points ...", [&](const StepProgress& progress) {
            qrb::pointcloud::TransactionGuard transaction(
                m_session.database->transactions(), "Import", transactionAgentText().toStdString(),
                {}, settings());
            exchange::AppendOptions options;
            options.round = m_wish.round;
            options.newIds = m_wish.newIds;
            options.crsAsIs = m_wish.asTheyAre;
            options.leftOut = leftOutOf(cloud);
            added = appendPoints(cloud, fileName, m_sources, options, listener(progress));
            transaction.commit(
                {}, [&](int percent) { progress("Writing " + fileName, percent / 100.0); });
        });
        outcome.changed = true;
        const QString rounded =
            added.rounded == 0
                ? QString()
                : QString("\n%0 values rounded.")
                      .arg(QLocale().toString(static_cast<qulonglong>(added.rounded)));
        showInformation(m_parent, doneText(added.points) + rounded, m_notes.join('\n'));
        return true;
    }

    // The names that the database has for what is left out.
    std::set<std::string> leftOutOf(const qrb::Pointcloud& cloud) const {
        const std::set<std::string> names = namesOf(m_wish.leftOut);
        std::set<std::string> meant;
        for (const auto& source : m_sources)
            for (const exchange::Column& column : source->columns())
                if (names.contains(column.attribute) &&
                    !(m_wish.newIds && column.attribute == "tarvo.id"))
                    meant.insert(exchange::attributeMeantBy(column, cloud.pointAttributes()));
        return meant;
    }

    static QString doneText(std::uint64_t points) {
        return points == 1 ? QString("One point imported.")
                           : QString("%0 points imported.")
                                 .arg(QLocale().toString(static_cast<qulonglong>(points)));
    }

    // What the dialog has shown needs no saying again.
    QString notesText() const {
        QStringList fresh;
        const QStringList shown = m_findings.notes + listOf(m_findings.plan.notes);
        for (const QString& note : m_notes)
            if (!shown.contains(note))
                fresh += note;
        return fresh.isEmpty() ? QString() : "\n\n" + fresh.join('\n');
    }

    const DatabaseSession& m_session;
    QWidget* m_parent;
    exchange::PointSources m_sources;
    ImportFindings m_findings;
    ImportWish m_wish;
    QStringList m_notes;  // of the import that was made last
};

}  // namespace

bool isPointFile(const QString& fileName) {
    static const QStringList suffixes = {"las", "laz", "ply", "ptx", "e57",
                                         "csv", "xyz", "pts", "asc"};
    const QFileInfo file(fileName);
    if (!file.isFile())
        return false;
    if (suffixes.contains(file.suffix().toLower()))
        return true;
    try {
        const exchange::FileKind kind = exchange::kindOfFile(fileName.toStdString());
        return kind.isCertain && !kind.format.empty();
    } catch (const core::Failure&) {
        return false;
    }
}

ImportOutcome importPoints(const QStringList& fileNames, const DatabaseSession& session,
                           const ImportTarget& target, QWidget* parent) {
    return PointImport(fileNames, session, parent).run(target);
}

}  // namespace tarvo::window
