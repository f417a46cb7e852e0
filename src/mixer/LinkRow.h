// One line that says with whom the program speaks: a mark, the port, the firmware, "simulated".
#pragma once

#include <QWidget>

class QLabel;

namespace sorvanto {

class LinkRow : public QWidget {
    Q_OBJECT

public:
    enum class Kind { Off, Searching, Good, Stale };

    explicit LinkRow(QWidget* parent = nullptr);
    /// badge: empty for none.
    void show(Kind kind, const QString& text, const QString& badge);
    QString text() const;
    QString badge() const;
    Kind kind() const { return m_kind; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Kind m_kind = Kind::Off;
    QLabel* m_text;
    QLabel* m_badge;
};

}  // namespace sorvanto
