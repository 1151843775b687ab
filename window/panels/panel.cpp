#include "window/panels/panel.h"

#include "window/common/guard.h"

namespace tarvo::window {

bool Panel::guarded(const std::function<void()>& action) {
    return window::guarded(this, action);
}

}  // namespace tarvo::window
