// Points for a view that moves: read on a thread of their own, the nearest and largest nodes first,
// and kept within a budget.
#pragma once

#include "drawing/camera.h"
#include "view/blocks.h"
#include "view/colouring.h"
#include "view/nodetree.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::view {

// What the view shows. Equal settings are worked on once.
struct StreamSettings {
    std::string fileName;
    std::uint32_t transaction = 0;          // to be read; 0: the current one
    std::optional<ColourChoice> colour;     // none: the first of colourChoices()
    std::optional<drawing::Colour> single;  // for all points, in place of what colour says
    std::string filter;                     // empty: all points; may name values
    Unmatched unmatched = Unmatched::Hidden;
    std::uint64_t points = 3'000'000;   // at once, most
    std::uint64_t memory = 512 << 20U;  // bytes of blocks that are kept, most

    friend bool operator==(const StreamSettings&, const StreamSettings&) = default;
};

// What is to be drawn now. Blocks do not overlap: until all nodes that are wanted below one that is
// there have come, that one stands for them.
struct StreamPicture {
    std::vector<std::shared_ptr<const PointBlock>> blocks;
    std::uint64_t points = 0;  // of the blocks
    bool isComplete = false;   // nothing finer is under way
    std::string error;         // why nothing more comes; empty: nothing failed
    std::string details;
};

// Known once the database is open.
struct StreamScene {
    CloudSpace space;
    std::shared_ptr<const Colouring> colouring;
    std::vector<ColourChoice> choices;
    std::vector<std::string> choiceTexts;
    std::uint64_t points = 0;
    bool hasLevelOfDetail = false;
    bool isSample = false;  // without a level of detail: an even part of the points
};

// All functions may be called from one thread, which none of them keeps waiting, but for the
// destructor; the database is opened once more, for reading, by the stream's own thread.
class PointStream {
public:
    // changed: called on the stream's thread whenever picture() or scene() has something new; must
    // not call the stream. The library must stay loaded while the stream lives.
    explicit PointStream(std::function<void()> changed);
    // Stops what is being read, and waits for that.
    ~PointStream();
    PointStream(const PointStream&) = delete;
    PointStream& operator=(const PointStream&) = delete;

    // Begins anew where anything but the colour, the filter or the limits differs.
    void show(const StreamSettings& settings);
    // Opens the database anew, because its state may have changed.
    void reload();
    // From where it is looked at.
    void look(const drawing::Camera& camera);

    StreamPicture picture() const;
    // Null until the database is open, and where that failed.
    std::shared_ptr<const StreamScene> scene() const;
    // The box of a node of the index; empty where it is not known (yet).
    drawing::Box boxOf(std::uint32_t nodeId) const;

private:
    class Worker;
    std::unique_ptr<Worker> m_worker;
};

}  // namespace tarvo::view
