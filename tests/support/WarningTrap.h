// Collects Qt's warnings during a test; one that was not expected fails it.
#pragma once

#include <QString>
#include <QStringList>

namespace support {

class WarningTrap {
public:
    WarningTrap();
    ~WarningTrap();
    WarningTrap(const WarningTrap&) = delete;
    WarningTrap& operator=(const WarningTrap&) = delete;

    /// Asserts that a warning with this part came, and takes it off the list.
    void expectWarning(const QString& part);
    /// Fails the test for each warning on the list; forgets them.
    void verify();
};

}  // namespace support
