// The health page: one line for each thing that the records depend on, a full green dot where all is well, a hollow
// amber one where something is to be looked at. The soundness of the file is looked at in a thread of its own.
#pragma once

#include "core/Health.h"
#include "platform/data/Backup.h"

#include <QDialog>
#include <QTimer>
#include <atomic>
#include <functional>
#include <future>
#include <memory>

class QFrame;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace sorvanto {

class HealthPage : public QDialog {
    Q_OBJECT

public:
    /// Looks a file through, in a thread of its own; what it finds, or nothing once it is cancelled.
    using Check = std::function<QStringList(const QString& file, const platform::Cancelled& cancelled)>;

    /// source: what only the window knows, asked anew with each check.
    HealthPage(const Context& context, std::function<WindowHealth()> source, QWidget* parent = nullptr,
               Check problems = platform::integrityProblems);
    /// A check that is under way is cancelled and left to itself: nobody waits for it.
    ~HealthPage() override;

    const std::vector<HealthLine>& lines() const { return m_lines; }
    /// Whether the file is still being looked through.
    bool isChecking() const { return m_check.valid(); }

private:
    void check();
    void look();
    void showLines();
    void addLine(int row, const HealthLine& line);
    /// At the end of the line, or below it on a narrow page.
    void addAside(QWidget& what, int top);
    void fitScreen();
    void addSecondPlace();
    void setSecondPlace();

    const Context& m_context;
    std::function<WindowHealth()> m_source;
    std::vector<HealthLine> m_lines;
    Check m_problems;
    std::future<QStringList> m_check;
    std::shared_ptr<std::atomic<bool>> m_cancelled = std::make_shared<std::atomic<bool>>(false);
    QTimer m_poll;
    QFrame* m_card;
    QLineEdit* m_place;
    QLabel* m_summary;
    QPushButton* m_again;
    bool m_narrow = false;
};

}  // namespace sorvanto
