// The line in memory, and formula documents for it.
#include "MemoryLine.h"

namespace sorvanto::test {

void MemoryLine::cut() {
    present = false;
    if (port && port->isOpen()) {
        port->close();
        emit port->failed(QStringLiteral("cut"));
    }
}

MixerEnvironment MemoryLine::environment() {
    LinkTiming timing;
    timing.reply = 100;
    timing.idlePoll = 15;
    timing.mixPoll = 10;
    timing.reopen = 20;
    return {[this] { return std::make_unique<MemoryPort>(*this); },
            [](int) { return QStringLiteral("/memory/COM1"); },
            [this] { return QByteArray::number(++mixIds).rightJustified(8, '0'); }, timing};
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
        const QByteArray reply = protocol::encode(m_line.mixer.receive(command));
        const bool lost = !m_line.answers || m_line.loseReplies > 0;
        m_line.loseReplies = std::max(0, m_line.loseReplies - 1);
        m_line.transcript << QString::fromLatin1(reply).trimmed() +
                                 (lost ? QStringLiteral("   (lost)") : QString());
        if (lost)
            continue;
        QMetaObject::invokeMethod(this, [this, reply] {
            if (m_open)
                emit bytesRead(reply);
        }, Qt::QueuedConnection);
    }
    return true;
}

platform::XmlDocumentPtr formulaDocument(const QString& customMix, int type, int jar, int make,
                                         const QString& name) {
    const platform::XmlDocumentPtr document = platform::XmlDocument::create();
    platform::XmlNode root = document->appendElement(QStringLiteral("Formula"));
    const auto add = [&](const char* element, const QString& text) {
        root.appendElement(QLatin1String(element)).setText(text);
    };
    add("ID", QStringLiteral("5"));
    add("Name", name);
    add("Type", QString::number(type));
    add("Size", QString::number(jar));
    add("QTY", QStringLiteral("100"));
    add("Make", QString::number(make));
    const platform::XmlDocumentPtr mix = platform::XmlDocument::create();
    if (mix->loadXML(customMix))
        root.appendCopy(mix->root());
    return document;
}

platform::XmlDocumentPtr shortFormula() {
    return formulaDocument(QString::fromLatin1(shortMix));
}

}  // namespace sorvanto::test
