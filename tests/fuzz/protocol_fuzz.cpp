// Feeds any bytes to the mixer's line. The frames found are exactly the whole ones, in whatever pieces the
// bytes come; each encodes to its own bytes; each message encodes to its own frame; disturbance never
// outlives a frame.
#include "Fuzz.h"

#include "mixer/protocol/FrameDecoder.h"
#include "mixer/protocol/Messages.h"

using fuzz::require;
using namespace sorvanto::protocol;

namespace {

/// The frames of a stream found the plain way: each line from its last start character.
std::vector<Frame> wholeFrames(const QByteArray& stream, Direction direction) {
    std::vector<Frame> frames;
    QByteArrayList lines = stream.split('\n');
    lines.removeLast();
    for (const QByteArray& line : lines) {
        const qsizetype start = std::max(line.lastIndexOf('<'), line.lastIndexOf('>'));
        const auto frame = start < 0 ? std::nullopt : decode(line.mid(start));
        if (frame && frame->direction == direction)
            frames.push_back(*frame);
    }
    return frames;
}

struct Fed {
    std::vector<Frame> frames;
    int damaged;
    bool operator==(const Fed&) const = default;
};

Fed fed(const QByteArray& stream, Direction direction, qsizetype piece) {
    FrameDecoder decoder(direction);
    Fed result{};
    for (qsizetype at = 0; at < stream.size(); at += piece) {
        for (const Frame& frame : decoder.feed(stream.mid(at, piece)))
            result.frames.push_back(frame);
    }
    result.damaged = decoder.damaged();
    return result;
}

/// A message that was read gives, written again, the frame that it came in.
void checkMessage(const Frame& frame) {
    const auto command = [&](Frame made) {
        made.sequence = frame.sequence;
        made.direction = frame.direction;
        require(made == frame, "a command is what it was read from");
    };
    const auto reply = [&](const Frame& made) {
        require(made.kind == frame.kind && made.fields == frame.fields && made.sequence == frame.sequence,
                "a reply is what it was read from");
    };
    const auto head = [](std::pair<Programme, int> read) {
        read.first.steps.resize(static_cast<std::size_t>(read.second));
        return read.first;
    };
    if (const auto read = readHello(frame))
        command(helloCommand(*read));
    if (const auto read = readLoad(frame))
        command(loadCommand(head(*read)));
    if (const auto read = readStep(frame))
        command(stepCommand(read->first, read->second));
    if (const auto read = readRead(frame))
        command(readCommand(*read));
    if (const auto read = readMixId(frame))
        command(frame.kind == "START" ? startCommand(*read) : resultCommand(*read));
    if (const auto read = readIdentity(frame))
        reply(identityReply(frame, *read));
    if (isOk(frame))
        reply(okReply(frame));
    if (const auto read = readRefusal(frame))
        reply(refusalReply(frame, *read));
    if (const auto read = readStatus(frame))
        reply(statusReply(frame, *read));
    if (const auto read = readHead(frame))
        reply(headReply(frame, head(*read)));
    if (const auto read = readResults(frame))
        reply(resultsReply(frame, *read));
}

void tryStream(const QByteArray& stream, Direction direction) {
    const Fed once = fed(stream, direction, std::max<qsizetype>(stream.size(), 1));
    require(once == fed(stream, direction, 1) && once == fed(stream, direction, 7),
            "pieces make no difference");
    require(once.frames == wholeFrames(stream, direction), "exactly the whole frames are found");
    for (const Frame& frame : once.frames) {
        require(stream.contains(encode(frame)), "a frame encodes to its own bytes");
        checkMessage(frame);
    }
    // Whatever came before, the next whole frame is found.
    const Frame next{direction, 7, "STATUS", {}};
    require(!fed(stream + encode(next), direction, 5).frames.empty() &&
                fed(stream + encode(next), direction, 5).frames.back() == next,
            "in step again at the next frame");
}

/// The bytes as kind and fields of a frame with a good check, so that the readers are reached without luck.
void tryFields(const QByteArray& text, Direction direction) {
    QByteArrayList fields = text.split(' ');
    Frame frame{direction, static_cast<std::uint8_t>(text.size()), fields.takeFirst(), fields};
    const QByteArray line = encode(frame);
    if (line.isEmpty())
        return;
    require(line.size() <= longestFrame, "no frame is too long");
    require(decode(line.chopped(1)) == frame, "what was encoded is what is read");
    checkMessage(frame);
    // Any change of a single byte is found.
    for (qsizetype at = 0; at + 1 < line.size(); ++at) {
        QByteArray changed = line.chopped(1);
        changed[at] = static_cast<char>(changed[at] ^ (1 + text.size() % 127));
        require(!decode(changed), "no changed byte is accepted");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray content = fuzz::bytes(data, size);
    for (const Direction direction : {Direction::ToMixer, Direction::ToProgram}) {
        tryStream(content, direction);
        for (const QByteArray& line : content.split('\n'))
            tryFields(line, direction);
    }
    return 0;
}
