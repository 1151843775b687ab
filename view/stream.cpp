#include "view/stream.h"

#include "core/error.h"
#include "core/namedfilter.h"
#include "qrb/error.h"
#include "view/nodechoice.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <utility>

namespace tarvo::view {

namespace {

// Bytes of the library's cache for what the stream reads.
constexpr std::uint64_t cacheSize = 128 << 20U;
constexpr std::uint64_t bytesPerPoint = 24;
// A coarse picture comes first, of a part of the points that are shown in the end.
constexpr std::uint64_t stages[] = {64, 8, 1};

// Something else is wanted than what is being read.
class Superseded : public std::exception {};

// Into an order in which each part at the beginning is spread evenly over the whole.
void spreadEvenly(std::vector<ChosenNode>& chosen) {
    const auto key = [](std::size_t place) {
        std::uint32_t bits = 0;
        for (int i = 0; i < 32; ++i)
            bits |= static_cast<std::uint32_t>(place >> i & 1U) << (31 - i);
        return bits;
    };
    std::vector<std::pair<std::uint32_t, ChosenNode>> keyed;
    for (std::size_t i = 0; i < chosen.size(); ++i)
        keyed.emplace_back(key(i), chosen[i]);
    std::sort(keyed.begin(), keyed.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
    for (std::size_t i = 0; i < chosen.size(); ++i)
        chosen[i] = keyed[i].second;
}

}  // namespace

class PointStream::Worker {
public:
    explicit Worker(std::function<void()> changed)
        : m_changed(std::move(changed)), m_thread([this] { run(); }) {}
    ~Worker() {
        {
            const std::lock_guard lock(m_mutex);
            m_isStopped = true;
            ++m_wish;
        }
        m_wake.notify_one();
        m_thread.join();
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    void show(const StreamSettings& settings) {
        const std::lock_guard lock(m_mutex);
        if (m_settings == settings)
            return;
        m_settings = settings;
        wish();
    }
    void reload() {
        const std::lock_guard lock(m_mutex);
        m_isReloadWished = true;
        wish();
    }
    void look(const drawing::Camera& camera) {
        const std::lock_guard lock(m_mutex);
        m_camera = camera;
        m_isCameraNew = true;
        m_wake.notify_one();
    }
    StreamPicture picture() const {
        const std::lock_guard lock(m_mutex);
        return m_picture;
    }
    std::shared_ptr<const StreamScene> scene() const {
        const std::lock_guard lock(m_mutex);
        return m_scene;
    }
    drawing::Box boxOf(std::uint32_t nodeId) {
        const std::lock_guard lock(m_mutex);
        if (const auto found = m_boxes.find(nodeId); found != m_boxes.end())
            return found->second;
        m_askedBox = nodeId;
        m_wake.notify_one();
        return {};
    }

private:
    // What is read is wanted no more. Under the mutex.
    void wish() {
        ++m_wish;
        m_wake.notify_one();
    }
    bool isSuperseded() const { return m_wish != m_served; }
    void check() const {
        if (isSuperseded())
            throw Superseded();
    }

    void run();
    void serve();
    void open(const StreamSettings& settings);
    void colour(const StreamSettings& settings);
    void choose(const drawing::Camera& camera);
    bool readNext();
    void publish();
    void fail(const std::string& error, const std::string& details);
    void tellBox(std::uint32_t nodeId);
    void forget();

    std::function<void()> m_changed;

    // Shared, under the mutex.
    mutable std::mutex m_mutex;
    std::condition_variable m_wake;
    std::optional<StreamSettings> m_settings;
    drawing::Camera m_camera;
    bool m_isCameraNew = false;
    bool m_isReloadWished = false;
    bool m_isStopped = false;
    std::optional<std::uint32_t> m_askedBox;
    std::unordered_map<std::uint32_t, drawing::Box> m_boxes;
    StreamPicture m_picture;
    std::shared_ptr<const StreamScene> m_scene;
    // Number of the newest wish, and of the one that is worked on.
    std::atomic<std::uint64_t> m_wish = 0;
    std::atomic<std::uint64_t> m_served = 0;

    // Of the stream's thread alone. The database is gone before its context.
    std::optional<qrb::Context> m_context;
    std::optional<qrb::Pointcloud> m_database;
    std::optional<NodeTree> m_tree;
    std::vector<std::uint32_t> m_parents;  // by place in the tree; the root's is itself
    std::unordered_map<std::uint32_t, std::uint32_t> m_places;  // by node id
    std::shared_ptr<const Colouring> m_colouring;
    StreamSettings m_shown;
    bool m_isFailed = false;
    BlockCache m_cache;
    std::vector<ChosenNode> m_chosen;                 // of the stage
    std::vector<std::vector<ChosenNode>> m_upcoming;  // finer stages, the coarsest last
    std::size_t m_next = 0;                           // of the chosen, to be read

    std::thread m_thread;  // last, so that all the others are there before it begins
};

void PointStream::Worker::run() {
    for (;;) {
        {
            std::unique_lock lock(m_mutex);
            const bool isIdle = m_isFailed || m_next >= m_chosen.size();
            const auto isAwaited = [this] {
                return m_isStopped || isSuperseded() || m_isCameraNew || m_askedBox;
            };
            if (isIdle && m_upcoming.empty())
                m_wake.wait(lock, isAwaited);
            if (m_isStopped)
                break;
        }
        try {
            serve();
        } catch (const Superseded&) {
        } catch (const qrb::Error& error) {
            if (!isSuperseded())
                fail(error.what(), error.details());
        } catch (const core::Failure& error) {
            fail(error.what(), error.details());
        } catch (const std::exception& error) {
            fail(error.what(), "");
        }
    }
    forget();
    m_database.reset();
    m_context.reset();
}

// One step: what is newly wished, or one more block.
void PointStream::Worker::serve() {
    std::optional<StreamSettings> settings;
    drawing::Camera camera;
    bool isCameraNew = false;
    bool isReload = false;
    std::optional<std::uint32_t> askedBox;
    {
        const std::lock_guard lock(m_mutex);
        settings = m_settings;
        camera = m_camera;
        isCameraNew = std::exchange(m_isCameraNew, false);
        isReload = std::exchange(m_isReloadWished, false);
        askedBox = std::exchange(m_askedBox, std::nullopt);
        m_served = m_wish.load();
    }
    if (!settings)
        return;
    const bool isOther = isReload || !m_database || settings->fileName != m_shown.fileName ||
                         settings->transaction != m_shown.transaction;
    const bool isNew = isOther || !(*settings == m_shown);
    if (isNew) {
        m_shown = *settings;
        m_isFailed = false;
    }
    if (isOther)
        open(*settings);
    if (m_isFailed || !m_context)
        return;
    const qrb::InterruptGuard interruptible(*m_context, [this] { return !isSuperseded(); });
    if (isOther)
        m_tree.emplace(*m_database);
    if (isNew)
        colour(*settings);
    if (askedBox)
        tellBox(*askedBox);
    if (isNew || isCameraNew)
        choose(camera);
    else if (readNext())
        publish();
}

void PointStream::Worker::open(const StreamSettings& settings) {
    forget();
    m_database.reset();
    m_context.reset();
    m_context.emplace("OFF", "");
    qrb::pointcloud::OpenSettings asked(*m_context);
    asked.cacheSize = cacheSize;
    asked.transaction = settings.transaction;
    asked.readOnly = true;
    qrb::Pointcloud database(*m_context);
    database.open(settings.fileName, asked);
    core::takeNamesInFilters(database);
    m_database.emplace(std::move(database));
}

// What was known of a database, or of another state of it.
void PointStream::Worker::forget() {
    m_cache.clear();
    m_chosen.clear();
    m_upcoming.clear();
    m_next = 0;
    m_colouring.reset();
    m_tree.reset();
    m_parents.clear();
    m_places.clear();
    const std::lock_guard lock(m_mutex);
    m_boxes.clear();
}

void PointStream::Worker::colour(const StreamSettings& settings) {
    m_cache.clear();
    const std::vector<ViewNode>& nodes = m_tree->nodes();
    if (m_parents.size() != nodes.size()) {
        m_parents.assign(nodes.size(), 0);
        for (std::uint32_t i = 0; i < nodes.size(); ++i) {
            m_places.emplace(nodes[i].id, i);
            for (std::uint32_t child = 0; child < nodes[i].children; ++child)
                m_parents[nodes[i].firstChild + child] = i;
        }
    }
    auto scene = std::make_shared<StreamScene>();
    scene->space = m_tree->space();
    scene->points = m_tree->points();
    scene->hasLevelOfDetail = m_tree->hasLevelOfDetail();
    scene->choices = colourChoices(*m_database);
    for (const ColourChoice& choice : scene->choices)
        scene->choiceTexts.push_back(colourText(*m_database, choice));
    m_colouring = std::make_shared<const Colouring>(
        *m_database, *m_tree, settings.colour ? *settings.colour : scene->choices.front());
    scene->colouring = m_colouring;
    // A filter that is wrong is told at once.
    (void)m_database->select(settings.filter);
    const std::uint64_t most = std::min(settings.points, settings.memory / bytesPerPoint);
    scene->isSample = !scene->hasLevelOfDetail && scene->points > most;
    {
        const std::lock_guard lock(m_mutex);
        m_scene = std::move(scene);
    }
    m_changed();
}

void PointStream::Worker::choose(const drawing::Camera& camera) {
    m_chosen.clear();
    m_upcoming.clear();
    m_next = 0;
    const std::uint64_t most =
        std::max<std::uint64_t>(std::min(m_shown.points, m_shown.memory / bytesPerPoint), 1);
    if (m_tree->hasLevelOfDetail()) {
        for (const std::uint64_t part : stages)
            m_upcoming.push_back(chooseNodes(*m_tree, camera, {most / part + 1, 1.0}));
        std::reverse(m_upcoming.begin(), m_upcoming.end());
    } else {
        std::vector<ChosenNode> leaves = chooseNodes(*m_tree, camera, {most, 1.0});
        // Few different parts, so that a small move asks for the same ones.
        for (ChosenNode& one : leaves)
            one.every = std::bit_ceil(one.every);
        spreadEvenly(leaves);
        m_upcoming.push_back(std::move(leaves));
    }
    publish();
}

// Whether there is something new to be seen.
bool PointStream::Worker::readNext() {
    if (m_next >= m_chosen.size()) {
        if (m_upcoming.empty())
            return false;
        m_chosen = std::move(m_upcoming.back());
        m_upcoming.pop_back();
        m_next = 0;
        return true;
    }
    const ChosenNode chosen = m_chosen[m_next++];
    if (m_cache.find(chosen))
        return m_next == m_chosen.size();
    const BlockLook look{m_shown.filter, m_shown.unmatched, m_shown.single};
    m_cache.add(chosen,
                std::make_shared<const PointBlock>(readBlock(*m_database, *m_tree, *m_colouring,
                                                             look, chosen, [this] { check(); })));
    return true;
}

void PointStream::Worker::publish() {
    StreamPicture picture;
    std::unordered_set<std::uint32_t> drawn;
    // The nodes above those that are missing, and then the others that are not below one of them.
    const auto isBelowDrawn = [&](std::uint32_t node) {
        for (std::uint32_t above = node;; above = m_parents[above]) {
            if (drawn.contains(above))
                return true;
            if (m_parents[above] == above)
                return false;
        }
    };
    const auto draw = [&](std::uint32_t node, const BlockCache::Block& block) {
        drawn.insert(node);
        picture.points += block->places.size();
        picture.blocks.push_back(block);
    };
    picture.isComplete = m_upcoming.empty();
    for (const ChosenNode& one : m_chosen) {
        if (m_cache.find(one))
            continue;
        picture.isComplete = false;
        for (std::uint32_t above = one.node; !isBelowDrawn(one.node); above = m_parents[above]) {
            if (const BlockCache::Block block = m_cache.findAny(above); block)
                draw(above, block);
            if (m_parents[above] == above)
                break;
        }
    }
    for (const ChosenNode& one : m_chosen)
        if (const BlockCache::Block block = m_cache.find(one); block && !isBelowDrawn(one.node))
            draw(one.node, block);
    for (const ChosenNode& one : m_chosen)
        drawn.insert(one.node);
    m_cache.shrink(m_shown.memory, drawn);
    {
        const std::lock_guard lock(m_mutex);
        m_picture = std::move(picture);
    }
    m_changed();
}

void PointStream::Worker::fail(const std::string& error, const std::string& details) {
    m_isFailed = true;
    m_chosen.clear();
    m_upcoming.clear();
    m_next = 0;
    {
        const std::lock_guard lock(m_mutex);
        m_picture = {};
        m_picture.error = error;
        m_picture.details = details;
    }
    m_changed();
}

void PointStream::Worker::tellBox(std::uint32_t nodeId) {
    const auto found = m_places.find(nodeId);
    const drawing::Box box = found == m_places.end() ? drawing::Box() : m_tree->box(found->second);
    {
        const std::lock_guard lock(m_mutex);
        m_boxes[nodeId] = box;
    }
    m_changed();
}

PointStream::PointStream(std::function<void()> changed)
    : m_worker(std::make_unique<Worker>(std::move(changed))) {}

PointStream::~PointStream() = default;

void PointStream::show(const StreamSettings& settings) {
    m_worker->show(settings);
}

void PointStream::reload() {
    m_worker->reload();
}

void PointStream::look(const drawing::Camera& camera) {
    m_worker->look(camera);
}

StreamPicture PointStream::picture() const {
    return m_worker->picture();
}

std::shared_ptr<const StreamScene> PointStream::scene() const {
    return m_worker->scene();
}

drawing::Box PointStream::boxOf(std::uint32_t nodeId) const {
    return m_worker->boxOf(nodeId);
}

}  // namespace tarvo::view
