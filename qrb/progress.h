// Carries a caller's progress function across the C interface.
#pragma once

#include "qrb/transactions.h"

#include <exception>

namespace tarvo::qrb::pointcloud {

// Lives for one library call: pass function() and data(), then have check() look at the status.
// Where the call failed, what the caller's function threw wins over the library's "cancelled". A
// call that succeeded has done its work, also when the function threw at the end: nothing is thrown
// then, for the caller would take the work for cancelled.
class ProgressTrampoline {
public:
    explicit ProgressTrampoline(const Progress& progress) : m_progress(progress) {}
    ProgressTrampoline(const ProgressTrampoline&) = delete;
    ProgressTrampoline& operator=(const ProgressTrampoline&) = delete;

    qrb_progress_function function() const { return m_progress ? &call : nullptr; }
    void* data() { return this; }
    void check(const PointcloudData& data, std::int32_t status) const {
        if (status != QRB_SUCCESS && m_thrown) {
            std::rethrow_exception(m_thrown);
        }
        data.check(status);
    }

private:
    static std::uint8_t call(std::uint8_t percent, void* data) {
        auto* const self = static_cast<ProgressTrampoline*>(data);
        if (self->m_thrown) {
            return 0;
        }
        try {
            self->m_progress(percent);
            return 1;
        } catch (...) {
            self->m_thrown = std::current_exception();
            return 0;
        }
    }

    const Progress& m_progress;
    std::exception_ptr m_thrown;
};

}  // namespace tarvo::qrb::pointcloud
