// Enter presses the button that has the focus, in every window of the program. A key that is held presses it once.
#pragma once

#include <QObject>

namespace platform {

class EnterKey : public QObject {
public:
    /// Listens to the whole application as long as it lives.
    explicit EnterKey(QObject* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace platform
