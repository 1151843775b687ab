// An open file of the operating system, closed with the object.
#pragma once

#include <unistd.h>

#include <utility>

namespace tarvo::plugin {

class Descriptor {
public:
    explicit Descriptor(int number = -1) : m_number(number) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    void reset(int number) {
        close();
        m_number = number;
    }
    void close() {
        if (m_number >= 0)
            ::close(m_number);
        m_number = -1;
    }
    int release() { return std::exchange(m_number, -1); }
    int number() const { return m_number; }
    bool isOpen() const { return m_number >= 0; }

private:
    int m_number;
};

}  // namespace tarvo::plugin
