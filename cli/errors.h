// What the commands throw besides the layer's Error.
#pragma once

#include "core/error.h"

namespace tarvo::cli {

using core::Failure;

// The words of the command line are off; ends the program with 2.
class UsageError : public Failure {
public:
    using Failure::Failure;
};

// A question was answered with no, and the answer has been written: ends the program with 1.
class NegativeAnswer : public Failure {
public:
    NegativeAnswer() : Failure("The answer is no.") {}
};

// What to do about a file that exists, for commands that have the option.
inline constexpr const char* overwriteAdvice = "Give --overwrite to replace it.";

// A signal asked to stop.
class Interrupted : public Failure {
public:
    Interrupted() : Failure("Interrupted.") {}
};

}  // namespace tarvo::cli
