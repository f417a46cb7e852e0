// The manual in a window of its own: contents and search on the left, the page on the right. It blocks nothing,
// asks nothing and owns no question; what is asked meanwhile belongs to the window before it.
#pragma once

#include "manual/ManualSearch.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QSplitter;
class QStackedWidget;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace sorvanto {

class ManualView;

class ManualWindow : public QWidget {
    Q_OBJECT

public:
    /// A manual without pages says that it is not there.
    explicit ManualWindow(Manual manual, QWidget* parent = nullptr);
    ~ManualWindow() override;

    /// Shows the place and comes to the front, also above a modal window, where it can be read as long as that one is
    /// open; beside one that opens later it stays in use, where it stands. A place that is not in the manual is its
    /// first page.
    void open(const ManualPlace& place);
    const Manual& manual() const { return m_manual; }

protected:
    bool event(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Where one has been, for going back.
    struct Stop {
        QString page;
        int section = 0;
    };

    void build();
    QWidget* buildBar();
    QWidget* buildSide();
    QWidget* buildPage();
    QToolButton* addButton(QWidget& bar, const char* name, const char* icon, const QString& text);
    void addKeys();
    void addKey(const QKeySequence& keys, const std::function<void()>& act);
    void fillContents();
    void fillOn();
    void fillHeadings(QTreeWidgetItem& line);
    void go(const QString& page, int section, const QStringList& words = {});
    void showStop(const Stop& stop, const QStringList& words = {});
    void goBy(int step);
    void showPlace();
    void openItem(const QTreeWidgetItem* item);
    void openHit(int row);
    void search();
    void showOutside(const QString& address);
    void changePart();
    void setZoom(double zoom);
    void standAbove(QWidget* modal);
    void belongTo(QWidget* modal);
    void remember() const;

    Manual m_manual;
    std::vector<Stop> m_stops;
    std::size_t m_stop = 0;  ///< the one on show
    std::vector<ManualHit> m_hits;
    QTimer m_filling;
    int m_filled = 0;           ///< lines of the contents that have their headings
    QPointer<QWidget> m_modal;  ///< the window that it stands above
    QToolButton *m_back = nullptr, *m_forward = nullptr;
    QLineEdit* m_words = nullptr;
    QLabel* m_count = nullptr;
    QSplitter* m_parts = nullptr;
    QStackedWidget* m_side = nullptr;
    QTreeWidget* m_contents = nullptr;
    QListWidget* m_list = nullptr;
    ManualView* m_view = nullptr;
    QWidget* m_foot = nullptr;
    QLabel* m_address = nullptr;
};

}  // namespace sorvanto
