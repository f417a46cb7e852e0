// The drafts that are kept: in memory, and each as a file of the folder "drafts" beside the program, readable
// by its owner alone. Files are written and removed in the order of the calls, off the interface thread.
#pragma once

#include "shared/Draft.h"

#include <QObject>
#include <QThreadPool>
#include <functional>

namespace sorvanto {

class DraftStore : public QObject {
    Q_OBJECT

public:
    static constexpr std::size_t mostKept = 20;
    static constexpr int daysKept = 30;

    /// Takes the program's folder of this moment; nothing is read or made.
    explicit DraftStore(QObject* parent = nullptr);
    /// Waits for the files.
    ~DraftStore() override;

    /// Reads the folder: what an earlier run left is offered. Files that are no draft stay where they are and
    /// go only when they are too old; a link is never followed.
    void read();
    /// The newest first.
    const std::vector<Draft>& drafts() const { return m_drafts; }
    /// nullptr when there is none; valid until the next change.
    const Draft* find(const QString& id) const;
    /// Adds the draft, or replaces the one with its id; what is too much or too old goes.
    void put(const Draft& draft);
    /// Does nothing when there is none of that id.
    void remove(const QString& id);
    /// Returns when all files are written; gives up after some seconds.
    void flush();

signals:
    void changed();

private:
    void addInOrder(const Draft& draft);
    bool erase(const QString& id);
    void thinOut();
    void readFile(const QString& name);
    void queue(std::function<void()> work);
    void tell(std::int32_t number, const QString& description);

    QString m_folder;
    std::vector<Draft> m_drafts;
    QThreadPool m_writer;
    bool m_failed = false;  ///< told; not again until a file could be written
};

}  // namespace sorvanto
