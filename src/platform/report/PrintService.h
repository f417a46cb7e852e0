// What the system's print service (CUPS) says of a job, which Qt does not pass on.
#pragma once

#include <QString>

namespace platform {

/// The reason why the service did not take the job that this thread sent last; empty when it took it, and
/// where there is no such service. To be asked right after the job was sent.
QString printServiceRefusal();

}  // namespace platform
