// The steps of a mix programme as rows of a list: lift speed, mix speed, time, cycles.
#pragma once

namespace platform {
class ReportList;
class XmlDocument;
}  // namespace platform

namespace sorvanto {

/// Adds a row for each element "Mix" anywhere in the document, in document order, untested. A missing
/// attribute throws; the row being built stays as far as it got.
void listMixSteps(const platform::XmlDocument& document, platform::ReportList& list);

}  // namespace sorvanto
