// Compares two transactions of the open file for the user.
#pragma once

#include "window/panels/databasesession.h"

#include <cstdint>
#include <utility>
#include <vector>

class QWidget;

namespace tarvo::window {

// The two of those kept (ascending) that a selection of one or two means, the older one first: one
// stands for itself and the current one, the current one for itself and the one kept before it, or,
// of the first, after it. The same twice where there is no other.
std::pair<std::uint32_t, std::uint32_t> comparedTransactions(
    const std::vector<std::uint32_t>& selected, const std::vector<std::uint32_t>& kept,
    std::uint32_t current);

// Reads both on another thread by a context of its own, beside the open database, with a dialog
// "Cancel"; then shows what is different. Throws qrb::Error, core::Failure and Cancelled
// (window/common/progress.h).
void compareTransactions(const DatabaseSession& session, std::uint32_t before, std::uint32_t after,
                         QWidget* parent);

}  // namespace tarvo::window
