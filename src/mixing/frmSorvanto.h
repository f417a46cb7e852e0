// The mixer screen: holds the mixer control in a band that stays on show beside the record screens,
// and takes a finished mix to the log.
#pragma once

#include "platform/xml/XmlDocument.h"
#include "records/BatchBook.h"
#include "shared/RecordScreen.h"

namespace sorvanto {

class ctlSorvanto;
struct MixerEnvironment;

class frmSorvanto : public RecordScreen, private BatchJournal {
    Q_OBJECT

public:
    explicit frmSorvanto(Context& context, QWidget* parent = nullptr);
    /// With ports and times of the caller's choice.
    frmSorvanto(Context& context, MixerEnvironment environment, QWidget* parent = nullptr);
    ~frmSorvanto() override;

    void Form_Load() override;
    ctlSorvanto& control() { return *ctlSorvanto1; }

    std::int16_t Listener() const override;
    void Listener(std::int16_t value) override;
    /// Closes the mixer control; never refuses.
    std::int16_t closeForm() override;

private:
    void ctlSorvanto1_mixDone(const platform::XmlDocumentPtr& formula,
                              const platform::XmlDocumentPtr& results);
    void ctlSorvanto1_enableForm();

    void takeDown(const BatchRows& rows) override;
    void noteDeletion(const BatchRows& rows) override;
    void undoDeletion() override;
    void noteRestored(const BatchRows& rows) override;

    BatchBook m_log;
    ctlSorvanto* ctlSorvanto1;
};

}  // namespace sorvanto
