// The patients as the log sees them: a batch is dispensed to one of them.
#pragma once

#include <QString>

namespace sorvanto {

class Dispensary {
public:
    virtual ~Dispensary() = default;
    /// Shows the patients, and offers to add the batch of that lot to the one whom the user chooses.
    virtual void offerBatch(const QString& lot) = 0;
};

}  // namespace sorvanto
