// Notices when the interface stood still: how long one event took until the next look at what the user does. What an
// event loop inside it (a dialog, long work in pieces) waits for or delivers does not count for the event around it.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <functional>

class QAbstractEventDispatcher;

namespace sorvanto {

class Heartbeat : public QObject {
public:
    /// Hears of a block: its milliseconds, and the delivery that took longest in it, "cmdExport (QAction)"; of those that are
    /// one inside the other the innermost that took most of it.
    using Listener = std::function<void(qint64 milliseconds, const QString& event)>;
    /// Milliseconds since some moment.
    using Clock = std::function<qint64()>;

    /// limit: milliseconds up to which nobody is told.
    Heartbeat(QAbstractEventDispatcher& dispatcher, qint64 limit, Listener listener, Clock clock = {});

    /// Around the delivery of each event: begin() gives what end() takes.
    qint64 begin();
    void end(qint64 begun, const QString& receiver, const char* receiverClass);

private:
    void look();
    void tellOfBlock(qint64 now);

    qint64 m_limit, m_since = 0, m_longest = 0, m_longestBegan = 0;
    Listener m_listener;
    Clock m_clock;
    QElapsedTimer m_time;
    QString m_receiver;
    const char* m_receiverClass = "";
    int m_depth = 0;       ///< deliveries under way, one inside the other
    int m_beganAt = 1;     ///< the depth of the delivery that the stretch began with
    bool m_looked = true;  ///< an event loop has looked since: the next delivery begins anew
};

}  // namespace sorvanto
