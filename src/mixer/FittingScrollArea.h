// Scrolls only what can't be pressed together any further: its content is as high as the view where its
// least height for the width allows, and a list inside the content takes the rest.
#pragma once

#include <QScrollArea>

namespace sorvanto {

class FittingScrollArea : public QScrollArea {
    Q_OBJECT

public:
    explicit FittingScrollArea(QWidget* parent = nullptr);
    /// The content needs a layout. Takes it over.
    void setContent(QWidget* content);
    /// Whether all of the content can be seen at once.
    bool hasRoom() const;

signals:
    void resized();

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int leastHeight(int width) const;
    void fit();
};

}  // namespace sorvanto
