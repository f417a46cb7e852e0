// The line in memory, and formula documents for it.
#include "MemoryLine.h"

#include <QTimer>

using namespace Qt::StringLiterals;

namespace sorvanto::test {

void MemoryLine::cut() {
    present = false;
    if (port && port->isOpen()) {
        port->close();
        emit port->failed(u"cut"_s);
    }
}

MixerEnvironment MemoryLine::environment() {
    LinkTiming timing;
    timing.reply = 100;
    timing.idlePoll = 15;
    timing.mixPoll = 10;
    timing.reopen = 20;
    return {[this] { return std::make_unique<MemoryPort>(*this); }, [](int) { return u"/memory/COM1"_s; },
            [this] { return QByteArray::number(++mixIds).rightJustified(8, '0'); }, timing, 5};
}

MemoryPort::~MemoryPort() {
    if (m_line.port == this)
        m_line.port = nullptr;
}

bool MemoryPort::open(const QString&, int) {
    m_line.port = this;
    return m_open = m_line.present;
}

bool MemoryPort::write(const QByteArray& bytes) {
    if (!m_line.arrives)
        return true;
    for (const protocol::Frame& command : m_decoder.feed(bytes)) {
        m_line.transcript << QString::fromLatin1(bytes).trimmed();
        protocol::Frame answer = m_line.mixer.receive(command);
        if (m_line.alter)
            m_line.alter(answer);
        const QByteArray reply = protocol::encode(answer);
        const bool lost = !m_line.answers || m_line.loseReplies > 0;
        m_line.loseReplies = std::max(0, m_line.loseReplies - 1);
        m_line.transcript << QString::fromLatin1(reply).trimmed() + (lost ? u"   (lost)"_s : QString());
        if (lost)
            continue;
        arrive(reply);
    }
    return true;
}

void MemoryPort::arrive(const QByteArray& reply) {
    const auto hear = [this, reply] {
        if (m_open)
            emit bytesRead(reply);
    };
    if (!m_line.likeASocket) {
        QMetaObject::invokeMethod(this, hear, Qt::QueuedConnection);
        return;
    }
    auto* arrival = new QTimer(this);
    arrival->setSingleShot(true);
    arrival->callOnTimeout(this, [hear, arrival] {
        arrival->deleteLater();
        hear();
    });
    arrival->start(0);
}

platform::XmlDocumentPtr formulaDocument(const QString& customMix, int type, int jar, int make,
                                         const QString& name) {
    const platform::XmlDocumentPtr document = platform::XmlDocument::create();
    platform::XmlNode root = document->appendElement(u"Formula"_s);
    const auto add = [&](const char* element, const QString& text) {
        root.appendElement(QLatin1String(element)).setText(text);
    };
    add("ID", u"5"_s);
    add("Name", name);
    add("Type", QString::number(type));
    add("Size", QString::number(jar));
    add("QTY", u"100"_s);
    add("Make", QString::number(make));
    const platform::XmlDocumentPtr mix = platform::XmlDocument::create();
    if (mix->loadXML(customMix))
        root.appendCopy(mix->root());
    return document;
}

platform::XmlDocumentPtr shortFormula() { return formulaDocument(QString::fromLatin1(shortMix)); }

}  // namespace sorvanto::test
