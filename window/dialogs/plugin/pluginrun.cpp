#include "window/dialogs/plugin/pluginrun.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QtConcurrentRun>
#include <algorithm>
#include <atomic>
#include <deque>
#include <mutex>
#include <utility>
#include <vector>

namespace tarvo::window {

namespace {

constexpr int deliveryInterval = 50;           // milliseconds
constexpr int resultPatience = 20;             // milliseconds that results may take each time
constexpr std::size_t pieceSize = 64 * 1024;   // of the output, in bytes
constexpr std::size_t waitingLimit = 2 << 20;  // of output that was not delivered yet

// The module and the runner, from the program's resources.
std::vector<plugin::Script> embeddedScripts() {
    std::vector<plugin::Script> scripts;
    const QDir folder(":/resources/python");
    for (QDirIterator files(folder.path(), QDir::Files, QDirIterator::Subdirectories);
         files.hasNext();) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly))
            scripts.push_back({folder.relativeFilePath(file.fileName()).toStdString(),
                               file.readAll().toStdString()});
    }
    return scripts;
}

}  // namespace

// Where the working thread leaves what it hears until the GUI thread takes it.
class PluginRun::Mailbox : public plugin::Listener {
public:
    struct Progress {
        double fraction = 0;
        QString text;
    };

    void printed(std::string_view text) override {
        const std::lock_guard lock(m_mutex);
        m_output += text;
        if (m_output.size() <= 2 * waitingLimit)
            return;
        // The beginning of a line is a good beginning.
        std::size_t start = m_output.find('\n', m_output.size() - waitingLimit);
        start = start == std::string::npos ? m_output.size() - waitingLimit : start + 1;
        m_output.replace(0, start, "\n[...]\n");
    }
    void progressed(double fraction, const std::string& text) override {
        const std::lock_guard lock(m_mutex);
        m_progress = {fraction, QString::fromStdString(text)};
    }
    void resulted(plugin::Result result) override {
        if (++m_heard > mostResults)
            return;
        auto told = std::make_shared<PluginResult>();
        told->result = std::move(result);
        if (told->result.kind == plugin::Result::Kind::PICTURE)
            told->picture =
                QImage::fromData(QByteArrayView(told->result.text.data(),
                                                static_cast<qsizetype>(told->result.text.size())),
                                 "PNG");
        const std::lock_guard lock(m_mutex);
        m_results.push_back(std::move(told));
    }
    bool cancelled() override { return m_cancelled; }

    void cancel() { m_cancelled = true; }
    std::string takeOutput() {
        const std::lock_guard lock(m_mutex);
        std::string piece = m_output.substr(0, pieceSize);
        m_output.erase(0, piece.size());
        return piece;
    }
    std::optional<Progress> takeProgress() {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_progress, std::nullopt);
    }
    // Null: there is none.
    std::shared_ptr<const PluginResult> takeResult() {
        const std::lock_guard lock(m_mutex);
        if (m_results.empty())
            return nullptr;
        auto result = std::move(m_results.front());
        m_results.pop_front();
        return result;
    }

    // To be read once the work is done.
    plugin::Outcome outcome;
    std::exception_ptr failure;
    int heard() const { return m_heard; }

private:
    std::mutex m_mutex;
    std::string m_output;
    std::optional<Progress> m_progress;
    std::deque<std::shared_ptr<const PluginResult>> m_results;
    int m_heard = 0;  // of results, on the working thread
    std::atomic<bool> m_cancelled = false;
};

PluginRun::PluginRun(QObject* parent) : QObject(parent) {
    m_timer.setInterval(deliveryInterval);
    connect(&m_timer, &QTimer::timeout, this, &PluginRun::deliver);
}

PluginRun::~PluginRun() {
    cancel();
    m_future.waitForFinished();
}

void PluginRun::start(PluginJob job) {
    m_mailbox = std::make_shared<Mailbox>();
    m_text.emplace();
    m_resultsLeftOut = 0;
    m_running = true;
    m_timer.start();
    m_future = QtConcurrent::run([job = std::move(job), mailbox = m_mailbox] {
        try {
            plugin::Request request;
            request.package = &job.package;
            request.interpreter = plugin::findInterpreter(job.pythonPath);
            request.scripts = embeddedScripts();
            request.library = job.library;
            request.database = job.database;
            request.arguments = job.arguments;
            request.agent = job.agent;
            if (mailbox->cancelled())
                mailbox->outcome.end = plugin::Outcome::End::CANCELLED;
            else
                mailbox->outcome = plugin::run(request, *mailbox);
        } catch (...) {
            mailbox->failure = std::current_exception();
        }
    });
}

void PluginRun::cancel() {
    if (m_mailbox)
        m_mailbox->cancel();
}

void PluginRun::deliver() {
    // Asked before what it may have left is taken.
    const bool finished = m_future.isFinished();
    const std::string output = m_mailbox->takeOutput();
    if (!output.empty())
        emit printed(m_text->add(output));
    if (!m_running) {
        if (output.empty())
            m_timer.stop();
        return;
    }
    if (const auto progress = m_mailbox->takeProgress())
        emit progressed(progress->fraction, progress->text);
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < resultPatience) {
        const auto result = m_mailbox->takeResult();
        if (!result && finished)
            return finish();
        if (!result)
            return;
        emit resulted(result);
    }
}

void PluginRun::finish() {
    m_running = false;
    m_outcome = m_mailbox->outcome;
    m_failure = m_mailbox->failure;
    m_resultsLeftOut = std::max(m_mailbox->heard() - mostResults, 0);
    emit ended();
}

}  // namespace tarvo::window
