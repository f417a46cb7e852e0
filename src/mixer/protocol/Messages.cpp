// Commands and replies to frames and back. Reading is strict: a value outside its range makes the whole
// frame no message.
#include "mixer/protocol/Messages.h"

#include <algorithm>
#include <array>
#include <limits>

namespace sorvanto::protocol {
namespace {

constexpr std::array<const char*, 6> stateWords{"IDLE", "LOADED", "MIXING", "PAUSED", "DONE", "FAULT"};
constexpr std::array<const char*, 5> reasonWords{"NONE", "USER", "LID", "ESTOP", "OVERLOAD"};
constexpr int most = std::numeric_limits<int>::max();

QByteArray idField(const MixId& id) { return id.isEmpty() ? QByteArray("-") : id; }

Frame command(const char* kind, QByteArrayList fields = {}) {
    return {Direction::ToMixer, 0, kind, std::move(fields)};
}

Frame reply(const Frame& command, const char* kind, QByteArrayList fields = {}) {
    return {Direction::ToProgram, command.sequence, kind, std::move(fields)};
}

QByteArrayList numbers(std::initializer_list<int> values) {
    QByteArrayList fields;
    for (const int value : values)
        fields << QByteArray::number(value);
    return fields;
}

QByteArrayList headFields(const Programme& p) {
    return QByteArrayList{idField(p.id)} +
           numbers({p.type, p.jar, p.quantity, p.preGrind, p.freeSpin, static_cast<int>(p.steps.size())});
}

QByteArrayList stepFields(int number, const Step& step) {
    return numbers({number, step.liftRpm, step.mixRpm, step.seconds, step.cycles});
}

/// Takes the fields of a frame one by one; one bad value spoils the whole reading.
class FieldReader {
public:
    FieldReader(const Frame& frame, const char* kind, int fields)
        : m_frame(frame), m_good(frame.kind == kind && frame.fields.size() == fields) {}

    int number(int lowest, int highest) {
        bool isNumber = false;
        const QByteArray text = next();
        const int value = text.toInt(&isNumber);
        m_good =
            m_good && isNumber && QByteArray::number(value) == text && value >= lowest && value <= highest;
        return value;
    }
    MixId mixId(bool mayBeNone) {
        const QByteArray text = next();
        const bool none = text == "-";
        m_good = m_good && (isMixId(text) || (none && mayBeNone));
        return none ? MixId() : text;
    }
    template <class Words>
    int word(const Words& words) {
        const QByteArray text = next();
        const auto found = std::find_if(words.begin(), words.end(), [&](const char* w) { return text == w; });
        m_good = m_good && found != words.end();
        return static_cast<int>(found - words.begin());
    }
    QByteArray next() { return m_good ? m_frame.fields[m_next++] : QByteArray(); }
    void require(bool condition) { m_good = m_good && condition; }
    template <class Value>
    std::optional<Value> result(Value value) const {
        return m_good ? std::optional<Value>(std::move(value)) : std::nullopt;
    }

private:
    const Frame& m_frame;
    bool m_good;
    int m_next = 0;
};

std::optional<std::pair<Programme, int>> readProgramme(const Frame& frame, const char* kind) {
    FieldReader read(frame, kind, 7);
    Programme p;
    p.id = read.mixId(false);
    p.type = read.number(0, 9);
    p.jar = read.number(1, 9);
    p.quantity =
        read.number(std::numeric_limits<std::int16_t>::min(), std::numeric_limits<std::int16_t>::max());
    p.preGrind = read.number(0, 15);
    p.freeSpin = read.number(1, 16);
    const int steps = read.number(1, mostSteps);
    return read.result(std::pair(p, steps));
}

bool isSerial(const QByteArray& text) {
    const auto letter = [](char c) { return c >= 'A' && c <= 'Z'; };
    const auto digit = [](char c) { return c >= '0' && c <= '9'; };
    return text.size() == 6 && std::all_of(text.begin(), text.begin() + 2, letter) &&
           std::all_of(text.begin() + 2, text.end(), digit);
}

}  // namespace

bool isMixId(const QByteArray& text) {
    return text.size() == 8 && std::all_of(text.begin(), text.end(), [](char c) {
               return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F');
           });
}

Frame helloCommand(const QByteArray& session) {
    return command("HELLO", {QByteArray::number(version), session});
}
Frame statusCommand() { return command("STATUS"); }
Frame loadCommand(const Programme& programme) { return command("LOAD", headFields(programme)); }
Frame stepCommand(int number, const Step& step) { return command("STEP", stepFields(number, step)); }
Frame readCommand(int number) { return command("READ", numbers({number})); }
Frame startCommand(const MixId& mix) { return command("START", {idField(mix)}); }
Frame pauseCommand() { return command("PAUSE"); }
Frame resumeCommand() { return command("RESUME"); }
Frame stopCommand() { return command("STOP"); }
Frame resultCommand(const MixId& mix) { return command("RESULT", {idField(mix)}); }
Frame clearCommand() { return command("CLEAR"); }

std::optional<QByteArray> readHello(const Frame& frame) {
    FieldReader read(frame, "HELLO", 2);
    read.number(version, version);
    return read.result(read.next());
}

std::optional<std::pair<Programme, int>> readLoad(const Frame& frame) { return readProgramme(frame, "LOAD"); }

std::optional<std::pair<int, Step>> readStep(const Frame& frame) {
    FieldReader read(frame, "STEP", 5);
    const int number = read.number(1, mostSteps);
    Step step;
    step.liftRpm = read.number(1, highestLiftRpm);
    step.mixRpm = read.number(1, highestMixRpm);
    step.seconds = read.number(0, longestStepSeconds);
    step.cycles = read.number(0, mostCycles);
    read.require((step.seconds > 0) != (step.cycles > 0));
    return read.result(std::pair(number, step));
}

std::optional<int> readRead(const Frame& frame) {
    FieldReader read(frame, "READ", 1);
    const int number = read.number(0, mostSteps);
    return read.result(number);
}

std::optional<MixId> readMixId(const Frame& frame) {
    FieldReader read(frame, frame.kind == "START" ? "START" : "RESULT", 1);
    const MixId id = read.mixId(false);
    return read.result(id);
}

Frame identityReply(const Frame& command, const Identity& identity) {
    return reply(command, "HI",
                 {QByteArray::number(identity.protocolVersion), identity.hardware, identity.serial});
}
Frame okReply(const Frame& command) { return reply(command, "OK"); }
Frame refusalReply(const Frame& command, const QByteArray& word) { return reply(command, "NO", {word}); }

Frame statusReply(const Frame& command, const Status& s) {
    QByteArrayList fields{stateWords[static_cast<std::size_t>(s.state)], idField(s.mix)};
    fields += numbers({s.step, s.steps, s.secondsLeft, s.secondsTotal, s.cycles, s.liftRpm, s.mixRpm});
    fields << reasonWords[static_cast<std::size_t>(s.reason)];
    return reply(command, "STAT", fields);
}

Frame headReply(const Frame& command, const Programme& programme) {
    return reply(command, "HEAD", headFields(programme));
}
Frame stepReply(const Frame& command, int number, const Step& step) {
    return reply(command, "STEP", stepFields(number, step));
}

Frame resultsReply(const Frame& command, const MixResults& r) {
    QByteArrayList fields{idField(r.mix)};
    fields += numbers({r.preparation, r.jar, r.type, r.cycles});
    fields << (r.stoppedByUser ? "U" : "A");
    fields += numbers({r.preGrind, r.revolutions});
    return reply(command, "RES", fields);
}

std::optional<Identity> readIdentity(const Frame& frame) {
    FieldReader read(frame, "HI", 3);
    Identity identity;
    identity.protocolVersion = read.number(version, version);
    identity.hardware = read.next();
    identity.serial = read.next();
    read.require(isSerial(identity.serial));
    return read.result(identity);
}

bool isOk(const Frame& frame) { return frame.kind == "OK" && frame.fields.isEmpty(); }

std::optional<QByteArray> readRefusal(const Frame& frame) {
    FieldReader read(frame, "NO", 1);
    return read.result(read.next());
}

std::optional<Status> readStatus(const Frame& frame) {
    FieldReader read(frame, "STAT", 10);
    Status s;
    s.state = static_cast<MixerState>(read.word(stateWords));
    s.mix = read.mixId(true);
    s.step = read.number(0, mostSteps);
    s.steps = read.number(0, mostSteps);
    s.secondsLeft = read.number(0, most);
    s.secondsTotal = read.number(0, most);
    s.cycles = read.number(0, most);
    s.liftRpm = read.number(0, highestLiftRpm);
    s.mixRpm = read.number(0, highestMixRpm);
    s.reason = static_cast<Reason>(read.word(reasonWords));
    return read.result(s);
}

std::optional<std::pair<Programme, int>> readHead(const Frame& frame) { return readProgramme(frame, "HEAD"); }

std::optional<MixResults> readResults(const Frame& frame) {
    static constexpr std::array<const char*, 2> endings{"A", "U"};
    FieldReader read(frame, "RES", 8);
    MixResults r;
    r.mix = read.mixId(false);
    r.preparation = read.number(1, most);
    r.jar = read.number(1, 9);
    r.type = read.number(0, 9);
    r.cycles = read.number(0, most);
    r.stoppedByUser = read.word(endings) == 1;
    r.preGrind = read.number(0, 15);
    r.revolutions = read.number(0, most);
    return read.result(r);
}

}  // namespace sorvanto::protocol
