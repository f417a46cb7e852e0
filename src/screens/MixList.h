// The steps of a mix programme as rows of a list: lift speed, mix speed, time, cycles.
#pragma once

#include <QString>

namespace platform {
class ReportList;
class XmlDocument;
}  // namespace platform

namespace sorvanto {

/// Adds a row for each element "Mix" anywhere in the document, in document order, untested. A missing
/// attribute throws; the row being built stays as far as it got.
void listMixSteps(const platform::XmlDocument& document, platform::ReportList& list);

/// What the list amounts to: "3 of 16 steps  ·  00:04:30 and 20 cycles". Without a most, of a batch that is made,
/// the steps alone are counted. A time or a count that can't be read leaves the sum away: it is never guessed.
QString mixListText(const platform::ReportList& list, int most = 0);

}  // namespace sorvanto
