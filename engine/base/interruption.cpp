#include "engine/base/interruption.h"

#include "engine/base/error.h"

#include <utility>

namespace tarvo::engine {

namespace {

thread_local const std::function<bool()>* t_goOn = nullptr;
thread_local bool t_asking = false;

}  // namespace

Interruption::Interruption(const std::function<bool()>& goOn)
    : m_before(std::exchange(t_goOn, goOn ? &goOn : nullptr)) {}

Interruption::~Interruption() {
    t_goOn = m_before;
}

bool Interruption::isWanted() noexcept {
    if (!t_goOn || t_asking)
        return false;
    t_asking = true;
    const bool goOn = (*t_goOn)();
    t_asking = false;
    return !goOn;
}

void Interruption::check() {
    if (isWanted())
        throw Failure(ErrorCode::Cancelled, "The call was interrupted.",
                      "Nothing was changed by it.");
}

bool Interruption::isAsking() noexcept {
    return t_asking;
}

}  // namespace tarvo::engine
