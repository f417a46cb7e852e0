// What goes on at the windows while the answer of a server is waited for. The data layer knows no windows: who has some
// hands this down to the connection.
#pragma once

namespace platform {

class Waiter {
public:
    virtual ~Waiter() = default;

    /// Called again and again, some 30 milliseconds apart. waited: milliseconds since the statement was handed in. False
    /// once the user has ended the wait. May let windows be painted; whatever asks the waiting connection for something
    /// meanwhile is refused with permissionDenied, and nothing of it runs.
    virtual bool goesOn(int waited) = 0;
    /// Whether a line that has ended is to be opened for what is asked now, which may take a while; otherwise it throws
    /// deviceIo at once, unless the line has been opened in the background meanwhile.
    virtual bool isPatient() const { return true; }
    /// The wait is over, also one that was never told of.
    virtual void ended() = 0;
    /// The confirmation of a change was lost; the program has looked it up, and the change was saved.
    virtual void foundSaved() = 0;
};

}  // namespace platform
