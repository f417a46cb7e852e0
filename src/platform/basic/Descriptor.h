// An open file of the system, closed at the end of its scope.
#pragma once

#include <unistd.h>
#include <utility>

namespace platform {

class Descriptor {
public:
    /// Takes what ::open gave; a negative number is no file.
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number() const { return m_number; }
    /// Whether the close succeeded; some file systems tell only here that the disk is full.
    bool close() {
        const int number = std::exchange(m_number, -1);
        return number < 0 || ::close(number) == 0;
    }

private:
    int m_number;
};

}  // namespace platform
