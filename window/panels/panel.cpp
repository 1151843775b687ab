#include "window/panels/panel.h"

#include "window/common/guard.h"

bool Panel::guarded(const std::function<void()>& action) {
    return tarvo::common::guarded(this, action);
}
