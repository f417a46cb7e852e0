// What a user does in a window of the tour.
#pragma once

#include "platform/widgets/RecordGrid.h"
#include "support/Child.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace languages {

/// The first row of a list of records.
inline void takeFirst(QWidget& list) {
    support::child<platform::RecordGrid>(list, "TDBList1")->selectRow(0);
    support::child<QPushButton>(list, "cmdOK")->click();
}

inline void typeOver(QLineEdit& edit, const QString& text) {
    edit.setFocus();
    edit.selectAll();
    QTest::keyClicks(&edit, text);
    QTest::keyClick(&edit, Qt::Key_Tab);
}

}  // namespace languages
