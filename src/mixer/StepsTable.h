// The steps of the programme, with the running one marked.
#pragma once

#include "mixer/PanelTexts.h"
#include "mixer/protocol/Messages.h"

#include <QTableWidget>
#include <vector>

namespace sorvanto {

class StepsTable : public QTableWidget {
    Q_OBJECT

public:
    explicit StepsTable(QWidget* parent = nullptr);

    /// current: number of the running step, from 1; 0 none. Steps before it are shown as done.
    /// stopped: the current step was cut off, and those behind it say that they did not run.
    void show(const std::vector<protocol::Step>& steps, int current, bool stopped, const PanelTexts& texts);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fill(const PanelTexts& texts);
    void mark();
    void keepInSight();
    int heightForRows(int rows) const;

    std::vector<protocol::Step> m_steps;
    int m_current = -1;
    bool m_stopped = false;
};

}  // namespace sorvanto
