// The worked frames of the protocol's document are frames, each command gets the answer that stands
// below it from the simulated mixer, and the document names every command.
#include "SimulatedMixer.h"

#include "mixer/protocol/Messages.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <gtest/gtest.h>

using namespace sorvanto;
using namespace sorvanto::protocol;

namespace {

QStringList linesOfDocument() {
    QFile file(QString::fromUtf8(SORVANTO_SOURCE_DIR "/docs/mixer-protocol.md"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll()).split('\n');
}

std::vector<Frame> workedFrames() {
    std::vector<Frame> frames;
    for (const QString& line : linesOfDocument()) {
        if (!line.startsWith('>') && !line.startsWith('<'))
            continue;
        const auto frame = decode(line.toLatin1());
        EXPECT_TRUE(frame) << line.toStdString();
        if (frame)
            frames.push_back(*frame);
    }
    return frames;
}

}  // namespace

TEST(ProtocolDocument, ItsFramesAreWhatTheMixerSays) {
    mixersim::SimulatedMixer mixer({version, "SIM-2.1", "SV0426"}, 11);
    const std::vector<Frame> frames = workedFrames();
    ASSERT_GT(frames.size(), 30U);
    std::int64_t now = 0;
    for (std::size_t i = 1; i + 1 < frames.size();
         i += 2) {  // the first stands alone, as the example of a frame
        const Frame &command = frames[i], &answer = frames[i + 1];
        ASSERT_EQ(command.direction, Direction::ToMixer);
        if (command.kind == "STATUS" && mixer.state() == MixerState::Mixing)
            mixer.advance(now += 12'000);
        if (command.kind == "RESUME") {  // in the part on what goes wrong the lid is open
            for (const Frame& restart :
                 {clearCommand(), loadCommand({"00000001", 9, 1, 1, 0, 1, {{1, 1, 1, 0}}}),
                  stepCommand(1, {1, 1, 1, 0}), startCommand("00000001")})
                mixer.receive(restart);
            mixer.openLid();
        }
        EXPECT_EQ(encode(mixer.receive(command)).toStdString(), encode(answer).toStdString())
            << encode(command).constData();
    }
}

TEST(ProtocolDocument, NamesEveryCommandAndWord) {
    const QString text = linesOfDocument().join('\n');
    for (const char* word :
         {"HELLO",  "STATUS", "LOAD",  "STEP",    "READ", "START", "PAUSE", "RESUME",  "STOP",
          "RESULT", "CLEAR",  "HI",    "STAT",    "HEAD", "RES",   "OK",    "NO",      "BUSY",
          "FAULT",  "ORDER",  "RANGE", "UNKNOWN", "USED", "LID",   "ESTOP", "OVERLOAD"})
        EXPECT_TRUE(text.contains(QRegularExpression(QString::fromLatin1("\\b%1\\b").arg(word)))) << word;
}
