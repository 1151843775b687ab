// What qrbtool offers its users against the faults of files.
#pragma once

namespace tarvo::cli {

// Sets exchange::advice(), once.
void setAdvice();

}  // namespace tarvo::cli
