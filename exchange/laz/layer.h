// One field's stream of a chunk, which is left out where the field never changes.
#pragma once

#include <utility>

namespace tarvo::exchange::laz {

template <typename Coder>
struct Layer {
    // Has the value coded, or lets it be the last one where the stream is left out.
    template <typename Value, typename Code>
    void code(Value& value, const Value& last, Code&& code) {
        if (isThere) {
            value = static_cast<Value>(code(coder));
            hasChanged |= value != last;
        } else {
            value = last;
        }
    }

    Coder coder;
    bool isThere = true;      // always of an encoder
    bool hasChanged = false;  // what an encoder's stream is kept for
};

}  // namespace tarvo::exchange::laz
