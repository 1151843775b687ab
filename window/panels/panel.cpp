#include "window/panels/panel.h"

#include "window/common/guard.h"

namespace tarvo::window {

bool Panel::guarded(const std::function<void()>& action) {
    return window::guarded(this, action);
}

bool Panel::aside(const QString& text, const AsideJob& job) {
    return guarded([&] { workAside(this, text, m_session.context, job); });
}

}  // namespace tarvo::window
