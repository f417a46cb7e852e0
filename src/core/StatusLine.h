// The line below the screens: where the set of the screen stands, what was just done, which database is open, and its
// newest checked copy; where nothing can be written or keys run out, that as well.
#pragma once

#include <QObject>
#include <QString>

class QLabel;
class QPushButton;
class QStatusBar;

namespace sorvanto {

class ListedScreen;
class News;
class RecordScreen;
struct Context;

class StatusLine : public QObject {
    Q_OBJECT

public:
    StatusLine(const Context& context, QStatusBar& bar, News& news);

    /// The screen in the middle, which may be one without a set.
    void setScreen(RecordScreen* screen);
    /// To be called when something was done.
    void follow();
    void showDatabase();
    void showCopy();
    /// Why nothing can be written; empty where it can.
    void setReadingOnly(const QString& why);
    /// Empty while there are enough.
    void setKeysLeft(const QString& text);

signals:
    void keysLeftClicked();

private:
    QLabel* addLabel(const QString& name);

    const Context& m_context;
    QStatusBar& m_bar;
    ListedScreen* m_screen = nullptr;
    QString m_placeText, m_countText;
    QString m_next;  ///< the database of the next start, where it is another one
    QLabel* m_place;
    QWidget* m_beforeNews;
    bool m_hasNews = false;
    QLabel* m_readingOnly;
    QPushButton* m_keysLeft;
    QLabel *m_database, *m_copyPicture, *m_copy;
};

}  // namespace sorvanto
