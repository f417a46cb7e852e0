// A recall list: what was asked and where it was looked for, the batches, and on pages of their own the patients to
// call, each with a box to tick and a line to sign.
#pragma once

#include "platform/report/Report.h"
#include "trace/RecallList.h"

#include <cstddef>
#include <vector>

namespace sorvanto {

struct Context;

class rptRecall : public platform::Report {
public:
    rptRecall(Context& context, RecallList list);
    const RecallList& list() const { return m_list; }

protected:
    bool startsPage() const override { return m_next == batchRows() + 1; }
    void fetchData(bool& eof) override;
    void pageHeaderFormat() override;
    void groupHeaderFormat() override;
    void detailFormat() override;
    void pageFooterFormat() override;
    void reportFooterFormat() override;

private:
    void translateForm();
    std::size_t batchRows() const { return m_list.recall.batches.size() + m_list.recall.uncertain.size(); }
    /// Whether the row at hand, or the last one, is a patient's.
    bool atPatients() const { return m_next > batchRows(); }
    void showAll(const QStringList& names, bool visible);
    void showBatch(const TracedBatch& batch);
    void showPatient(const CalledPatient& patient);

    Context& m_context;
    RecallList m_list;
    std::vector<CalledPatient> m_patients;
    std::size_t m_next = 0;  ///< row at hand, counted from 1: batches, then patients
};

/// "HC24118 (found by lot)"
QString recallTitle(const RecallList& list);
/// Each ingredient with NDC, lot and supplier, a line for each.
QStringList recallIngredients(const RecallList& list);

}  // namespace sorvanto
