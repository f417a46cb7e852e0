// A small bubble under a field that says why what is typed can't be taken, or why it should be looked at. It takes no focus and goes
// away with the next good input, when the field is hidden, or a few seconds after the field is left.
#pragma once

#include <QLabel>
#include <QPointer>
#include <QTimer>

class QLineEdit;

namespace platform {

class Hint : public QLabel {
    Q_OBJECT
public:
    /// Shows the text under the field and frames the field in red; an empty text takes both away.
    static void tell(QLineEdit& field, const QString& text);
    /// The same in amber, for input that is taken and should be looked at.
    static void warn(QLineEdit& field, const QString& text);
    /// The text now shown for the field; empty when there is none.
    static QString textOf(const QLineEdit& field);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    Hint(QLineEdit& field, QWidget& window);
    static Hint* of(const QLineEdit& field);
    static void show(QLineEdit& field, const QString& text, bool refused);
    void place();

    QPointer<QWidget> m_field;  ///< told of its end when it is a line to type in no more
    QTimer m_leaving;
    bool m_refused = true;
};

}  // namespace platform
