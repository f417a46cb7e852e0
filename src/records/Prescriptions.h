// The list of a patient's prescriptions, each with the batch it was dispensed from.
#pragma once

#include "platform/data/Recordset.h"

#include <QString>
#include <cstdint>

namespace sorvanto {

enum class PrescriptionOrder { None, NewestFirst };

QString prescriptionsStatement(std::int16_t patient, PrescriptionOrder order);

/// Client-side and live: an edit of it goes to the table. A prescription without its batch does not show.
platform::RecordsetPtr openPrescriptions(std::int16_t patient, PrescriptionOrder order);

}  // namespace sorvanto
