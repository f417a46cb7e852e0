// A mix that is stopped in its midst while something is being typed: panel, signing, badge in the log.
#pragma once

#include <QString>

namespace tour {

/// Pictures of it all with that prefix; the language is of a first start. The formula mixes long enough to be stopped in its midst.
void runStopped(const QString& programFolder, const QString& pictureFolder, const QString& prefix,
                const QString& formula, int language);

}  // namespace tour
