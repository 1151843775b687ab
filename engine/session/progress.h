// How work tells how far it has come, and is told whether to go on.
#pragma once

#include "engine/store/container.h"

#include <functional>
#include <optional>

namespace tarvo::engine::session {

// Receives per cent, returns whether to go on. Empty: nobody wants to know.
using Progress = std::function<bool(int)>;

// While it lives, waiting for other programs asks the work's progress, too, with how far the work
// has come: it can be cancelled, and goes on as long as it is not.
class Patience {
public:
    // Both must outlive it.
    Patience(store::Container& container, const Progress& progress) : m_progress(progress) {
        if (progress)
            m_waiting.emplace(container, [this] { return m_progress(m_reached); });
    }
    Patience(const Patience&) = delete;
    Patience& operator=(const Patience&) = delete;

    // What the work is to tell; must not outlive this.
    Progress progress() {
        if (!m_progress)
            return {};
        return [this](int percent) { return m_progress(m_reached = percent); };
    }

private:
    const Progress& m_progress;
    int m_reached = 0;
    std::optional<store::Container::Waiting> m_waiting;
};

}  // namespace tarvo::engine::session
