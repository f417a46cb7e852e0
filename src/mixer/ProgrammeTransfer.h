// Brings a programme into the mixer: sends it whole, reads it back and compares.
#pragma once

#include "mixer/MixerLink.h"
#include "mixer/PanelTexts.h"

#include <QObject>
#include <vector>

namespace sorvanto {

class ProgrammeTransfer : public QObject {
    Q_OBJECT

public:
    explicit ProgrammeTransfer(MixerLink& link, QObject* parent = nullptr) : QObject(parent), m_link(link) {}

    /// Begins; a transfer under way is given up. When the mixer stops answering the transfer ends without
    /// a word, to be begun again with the mixer's next one.
    void begin(const protocol::Programme& programme);
    /// Nothing more is told of the transfer under way.
    void giveUp();
    bool isActive() const { return !m_frames.empty(); }

signals:
    /// The mixer holds exactly the programme that was sent.
    void verified(const sorvanto::protocol::MixId& mix);
    /// The mixer refused a part, or holds another programme.
    void refused(const sorvanto::PanelMessage& why);

private:
    void sendFrame();
    void answered(const std::optional<protocol::Frame>& reply);
    bool isAsExpected(const protocol::Frame& command, const protocol::Frame& reply) const;
    bool matchesReadBack(int number, const protocol::Frame& reply) const;

    MixerLink& m_link;
    protocol::Programme m_programme;
    std::vector<protocol::Frame> m_frames;
    std::size_t m_frame = 0;
    int m_transfer = 0;  ///< counted, so that a reply to one given up is not taken for one of this
};

}  // namespace sorvanto
