#include "Bench.h"

#include "support/Waiting.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace e2e {

QString Bench::executable(const QString& name) { return QString::fromUtf8(SORVANTO_BIN_DIR "/") + name; }

Bench::~Bench() {
    m_simulator.terminate();
    if (!m_simulator.waitForFinished(5000))
        m_simulator.kill();
    m_simulator.waitForFinished();
}

bool Bench::layOut(int speed, const QString& serial) {
    const QDir languages(QString::fromUtf8(SORVANTO_SOURCE_DIR "/languages"));
    for (const QString& name : languages.entryList({"*.xml"}, QDir::Files)) {
        if (!QFile::copy(languages.filePath(name), path(name)))
            return false;
    }
    QStringList arguments{u"--link"_s,       path("ports/COM1"),
                          u"--speed"_s,      QString::number(speed),
                          u"--parent-pid"_s, QString::number(QCoreApplication::applicationPid())};
    if (!serial.isEmpty())
        arguments << u"--serial"_s << serial;
    if (!QDir(folder()).mkpath("ports"))
        return false;
    m_simulator.start(executable("sorvanto-mixersim"), arguments);
    return m_simulator.waitForStarted() && m_simulator.waitForReadyRead(support::patience);
}

QString Bench::options(const QString& location, const QString& printer) const {
    return u"<Configuration><Version>1</Version><Options><CommPort>1</CommPort><DBLocation>%1"
           u"</DBLocation><Language>0</Language><DefPrinter>%2</DefPrinter><DefCurrency></DefCurrency>"
           u"</Options><Pharmacy><StoreName>Mill Road</StoreName><Address></Address><City></City>"
           u"<State></State><PostalCode></PostalCode><Phone></Phone><Fax></Fax><DEA></DEA>"
           u"<ShowPatients>1</ShowPatients><OverrideSpeed>0</OverrideSpeed></Pharmacy>"
           u"</Configuration>"_s.arg(location.toHtmlEscaped(), printer);
}

}  // namespace e2e
