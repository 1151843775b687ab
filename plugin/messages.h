// The words that a program and the runner of its plugin exchange: a JSON object a line.
#pragma once

#include "plugin/run.h"

#include <optional>
#include <string>

namespace tarvo::plugin {

// The lines that a program sends, line breaks included.
std::string runMessage(const Request& request, const std::string& script);
std::string cancelMessage();

// What comes back.
class Messages {
public:
    explicit Messages(Listener& listener) : m_listener(listener) {}

    // Takes the whole lines off the text and tells the listener what they say. A line that is no
    // message was printed by something that found the way: it is added to the printed text.
    void take(std::string& text, std::string& printed);

    // The last word, once it came; nothing is heard after it.
    const std::optional<Outcome>& outcome() const { return m_outcome; }
    // Why no more is listened to: the process is to be stopped.
    const std::optional<std::string>& failure() const { return m_failure; }

private:
    bool takeLine(std::string_view line);

    Listener& m_listener;
    std::optional<Outcome> m_outcome;
    std::optional<std::string> m_failure;
    std::size_t m_searched = 0;  // bytes of the text that hold no line break
    std::size_t m_heard = 0;     // bytes of results
};

}  // namespace tarvo::plugin
