#include "config/ServerTexts.h"

#include "platform/data/DataLocation.h"
#include "platform/data/postgres/Address.h"
#include "platform/data/postgres/AddressParts.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

using platform::postgres::AddressFault;
using platform::postgres::TrialEnd;

namespace {

/// The address of a server that can't be read, or in which a password stands.
bool isHidden(const QString& location) {
    const QString address = location.trimmed();
    return platform::postgres::isAddress(address) &&
           platform::postgres::faultOf(address) != AddressFault::None;
}

}  // namespace

QString trialText(TrialEnd end, int seconds) {
    switch (end) {
    case TrialEnd::Works:
        return translated(u"The server answers, and the records are there."_s);
    case TrialEnd::UnknownName:
        return translated(u"No computer is known by this name. Look at the spelling, and at the network."_s);
    case TrialEnd::NoAnswer:
        return translated(
            u"Nothing answers there. Look at the port and the network, and whether the server runs."_s);
    case TrialEnd::TookTooLong:
        return translated(
                   u"The server did not answer within %1 seconds. Look at the network, and whether it runs."_s)
            .arg(seconds);
    case TrialEnd::NotProven:
        return translated(
            u"The server does not prove that it is this computer. Write the name as its certificate has it, and choose "
            "the file ca.crt that it came with."_s);
    case TrialEnd::NoPassword:
        return translated(
            u"The server asks for a password, and none is stored. Put the line that came with the server "
            "into the file .pgpass in your home folder."_s);
    case TrialEnd::Refused:
        return translated(
            u"The server refuses the account or its password. Look at the line in the file .pgpass."_s);
    case TrialEnd::NoDatabase:
        return translated(u"The server has no database of this name."_s);
    case TrialEnd::NotReady:
        return translated(u"The server is not ready now. Try again in a minute."_s);
    case TrialEnd::NoRecords:
        return translated(
            u"This database has no records of the program, or the account may not read them."_s);
    case TrialEnd::Stopped:
        break;
    }
    return translated(u"Stopped. It is not known whether the server answers."_s);
}

QString locationRefused(const QString& location) {
    const QString address = location.trimmed();
    if (!platform::postgres::isAddress(address))
        return {};
    switch (platform::postgres::faultOf(address)) {
    case AddressFault::None:
        break;
    case AddressFault::Secret:
        return translated(
            u"The address holds a password and is not stored: others can read the options. Put the password "
            "into the file .pgpass in your home folder, or use a service file or a certificate."_s);
    case AddressFault::Unreadable:
        return translated(u"The address of the server can not be read and is not stored."_s);
    }
    return {};
}

QString shownLocation(const QString& location) {
    return isHidden(location) ? u"postgresql://\u2026"_s : location;
}

QString shortLocation(const QString& location) {
    return isHidden(location) ? shownLocation(location) : platform::DataLocation(location).shownName();
}

}  // namespace sorvanto
