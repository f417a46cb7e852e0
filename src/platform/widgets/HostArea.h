// The place of the hosted windows: one in the middle, chosen by the visible host band, and a column at
// the right that stays. A window too tall or wide for its place scrolls.
#pragma once

#include <QWidget>
#include <vector>

class QScrollArea;
class QStackedWidget;
class QVBoxLayout;

namespace platform {

/// Where the companion of the windows in the middle stands.
enum class Companion { Hidden, Beside, Instead };

/// A property of a window in the middle: its least width beside the companion, where a form needs more than others.
inline constexpr auto besideWidth = "besideWidth";

class HostArea : public QWidget {
    Q_OBJECT
public:
    explicit HostArea(QWidget* parent);

    /// Stands at the left end.
    void setSideBar(QWidget& sideBar);
    void addStrip(QWidget& strip);
    /// Shows a window in the middle; nullptr: an empty place.
    void showInMiddle(QWidget* form);
    /// Keeps a window that is not shown now.
    void keep(QWidget& form);
    /// A widget that keeps the windows in the middle company: at their right side, where they then take no more
    /// than their form needs, or in their place. Hidden at first.
    void setCompanion(QWidget& widget);
    void showCompanion(Companion place);
    /// Shows a window in the column at the right; nullptr: no column.
    void showAtRight(QWidget* form);
    /// Its parts from left to right, as they are laid out: side bar, strips, the window in the middle, its companion,
    /// the column at the right; hidden ones too.
    std::vector<QWidget*> areas() const;

private:
    /// nullptr while the window has not been shown yet.
    QScrollArea* pageOf(const QWidget& form) const;
    QScrollArea* makePage(QWidget& form);

    class Middle;
    QVBoxLayout* m_middle;
    QStackedWidget* m_pages;
    Middle* m_room;
    QWidget* m_blank;
    QWidget* m_kept;  ///< parent of the windows without a page; never shown
    QScrollArea* m_right;
};

}  // namespace platform
