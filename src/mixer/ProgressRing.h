// A ring that fills as a mix goes on, with the time left in its middle.
#pragma once

#include <QString>
#include <QWidget>

namespace sorvanto {

class ProgressRing : public QWidget {
    Q_OBJECT

public:
    enum class Tone { Quiet, Running, Held, Good, Problem };

    explicit ProgressRing(QWidget* parent = nullptr);

    /// fraction 0 to 1; below 0 no arc, or dots all round where it is held: how far it came is not known.
    /// Both texts are read out as the widget's accessible name.
    void show(double fraction, Tone tone, const QString& middle, const QString& below);
    QString middle() const { return m_middle; }
    QString below() const { return m_below; }
    double fraction() const { return m_fraction; }

    /// Less room for it, where something more urgent needs it.
    void setSmall(bool on);

    QSize sizeHint() const override { return m_small ? QSize(124, 124) : QSize(172, 172); }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintTexts(QPainter& painter, const QRectF& inside) const;

    bool m_small = false;
    double m_fraction = -1;
    Tone m_tone = Tone::Quiet;
    QString m_middle, m_below;
};

}  // namespace sorvanto
