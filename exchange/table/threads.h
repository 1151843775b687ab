// Work on a batch of points, on all cores.
#pragma once

#include <cstddef>
#include <functional>

namespace tarvo::exchange {

// Calls work on this thread and on further ones, as many in all as the machine has cores but not
// more than there are pieces, and waits. The calls share the pieces among them. Throws what one of
// them threw; the others have ended then.
void onAllCores(std::size_t pieces, const std::function<void()>& work);

}  // namespace tarvo::exchange
