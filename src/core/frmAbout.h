// The about box: versions of program and database. A click anywhere on it closes it, and so does a key.
#pragma once

#include <QDialog>
#include <memory>

namespace sorvanto {

struct Context;

namespace Ui {
class frmAbout;
}

class frmAbout : public QDialog {
    Q_OBJECT

public:
    explicit frmAbout(Context& context, QWidget* parent = nullptr);
    ~frmAbout() override;
    void Form_Load();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Form_Click();

    Context& m_context;
    std::unique_ptr<Ui::frmAbout> m_ui;
};

}  // namespace sorvanto
