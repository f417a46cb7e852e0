// Long work in a window that can be used meanwhile: a bar that says how far it is, and a button that stops it. Neither is
// seen until it takes long enough to be waited for.
#pragma once

#include <QString>
#include <QWidget>

class QProgressBar;
class QPushButton;

namespace platform {

class WorkLine : public QWidget {
public:
    explicit WorkLine(QWidget* parent = nullptr);

    /// what: what is being done, in the user's language, for screen readers.
    void start(const QString& what);
    /// 0 to 1, below 0 where nobody knows.
    void setDone(double done);
    void end();
    bool wasStopped() const { return m_stopped; }

private:
    QProgressBar* m_bar;
    QPushButton* m_stop;
    bool m_stopped = false;
};

}  // namespace platform
