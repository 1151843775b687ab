// What the window offers its users against the faults of files of other formats.
#pragma once

namespace tarvo::window {

// Sets exchange::advice(), once.
void setAdvice();

}  // namespace tarvo::window
