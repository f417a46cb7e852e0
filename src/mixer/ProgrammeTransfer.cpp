// Sending, reading back and comparing, one frame after the other.
#include "mixer/ProgrammeTransfer.h"

namespace sorvanto {

using namespace protocol;

void ProgrammeTransfer::begin(const Programme& programme) {
    giveUp();
    m_programme = programme;
    m_frames.push_back(loadCommand(programme));
    int number = 0;
    for (const Step& step : programme.steps)
        m_frames.push_back(stepCommand(++number, step));
    for (int read = 0; read <= number; ++read)
        m_frames.push_back(readCommand(read));
    sendFrame();
}

void ProgrammeTransfer::giveUp() {
    m_frames.clear();
    m_frame = 0;
    ++m_transfer;
}

void ProgrammeTransfer::sendFrame() {
    m_link.send(m_frames[m_frame], [this, transfer = m_transfer](const std::optional<Frame>& reply) {
        if (transfer == m_transfer)
            answered(reply);
    });
}

void ProgrammeTransfer::answered(const std::optional<Frame>& reply) {
    if (!reply) {
        giveUp();
    } else if (!isAsExpected(m_frames[m_frame], *reply)) {
        giveUp();
        const auto word = readRefusal(*reply);
        emit refused(word ? PanelMessage{PanelText::ProgrammeRefused, {QString::fromLatin1(*word)}}
                          : PanelMessage{PanelText::Misstored, {}});
    } else if (++m_frame < m_frames.size()) {
        sendFrame();
    } else {
        giveUp();
        emit verified(m_programme.id);
    }
}

bool ProgrammeTransfer::isAsExpected(const Frame& command, const Frame& reply) const {
    const auto number = readRead(command);
    return number ? matchesReadBack(*number, reply) : isOk(reply);
}

bool ProgrammeTransfer::matchesReadBack(int number, const Frame& reply) const {
    if (number > 0) {
        const auto step = readStep(reply);
        return step && step->first == number &&
               step->second == m_programme.steps[static_cast<std::size_t>(number) - 1];
    }
    const auto head = readHead(reply);
    Programme withoutSteps = m_programme;
    withoutSteps.steps.clear();
    return head && head->first == withoutSteps &&
           static_cast<std::size_t>(head->second) == m_programme.steps.size();
}

}  // namespace sorvanto
