// Trying whether a server can be worked with, in a thread of its own: a name that nobody knows, or a computer that is off,
// holds nobody up.
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <memory>

namespace platform::postgres {

enum class TrialEnd {
    Works,        ///< the records are there and can be read
    UnknownName,  ///< no computer is known by it
    NoAnswer,     ///< nothing listens there
    TookTooLong,  ///< not within the time
    NotProven,    ///< no encryption, or the certificate is not that of this computer
    NoPassword,   ///< the server wants one, and the account has none stored
    Refused,      ///< the account or its password
    NoDatabase,   ///< none of that name
    NotReady,     ///< starting, ending, or full; or it gives its records, but not to this program now
    NoRecords,    ///< the database has no tables of this system, or the account may not read them
    Stopped,      ///< by the user
};

/// What the records are asked beside that, and whether by the answer they are for this program; asked in the thread of the
/// attempt. The question gives one row of one value, without any search path.
struct Admission {
    QByteArray question;
    std::function<bool(const QByteArray& answer)> admits;
};

/// What comes of an attempt, waited for; TookTooLong after so many milliseconds. Throws as DataLocation does.
TrialEnd tryServer(const QString& address, int milliseconds);

class Attempt;

class Trial {
public:
    /// Begins. address: as DataLocation takes it, without a secret. milliseconds: for all of it.
    Trial(const QString& address, int milliseconds, Admission admission = {});
    /// What is still under way is left to itself and disturbs nobody.
    ~Trial();
    Trial(const Trial&) = delete;
    Trial& operator=(const Trial&) = delete;

    /// Ends it as Stopped.
    void stop();
    bool ended() const;
    /// Once ended.
    TrialEnd end() const;

private:
    std::shared_ptr<Attempt> m_attempt;
};

}  // namespace platform::postgres
