// The server of several benches: its address by its parts, tried out.
#pragma once

#include "platform/data/postgres/AddressParts.h"
#include "platform/data/postgres/Trial.h"

#include <QDialog>
#include <QTimer>
#include <memory>
#include <optional>

class QGridLayout;
class QLabel;
class QProgressBar;
class QPushButton;

namespace platform {
class TextBox;
}

namespace sorvanto {

class ServerDialog : public QDialog {
    Q_OBJECT
public:
    /// location: what the options hold; that of a file, and one that can't be read, leave the usual values.
    explicit ServerDialog(const QString& location, QWidget* parent = nullptr);
    ~ServerDialog() override;

    /// What the boxes say, for DataLocation; to be kept once the dialog is accepted.
    QString address() const;

    void done(int result) override;

private:
    void buildWindow();
    QGridLayout* buildBoxes();
    platform::TextBox* addBox(QGridLayout& boxes, const QString& caption, const QString& name);
    void fill(const platform::postgres::AddressParts& parts);
    platform::postgres::AddressParts typed() const;
    /// What is wrong with what is typed, in a sentence; empty where nothing is.
    QString problem() const;

    void heardTyping();
    void takeApart();
    void chooseCertificate();
    void tryOut();
    void lookForEnd();
    void say(const QString& text, bool isWarning);
    void showState();

    platform::TextBox *m_computer, *m_port, *m_database, *m_account, *m_certificate;
    QPushButton *m_choose, *m_try, *m_ok, *m_cancel;
    QLabel* m_result;
    QProgressBar* m_wait;
    QString m_others;
    std::unique_ptr<platform::postgres::Trial> m_trial;  ///< while one is under way
    bool m_works = false;                                ///< the last one has shown it
    QTimer m_turn;
};

}  // namespace sorvanto
