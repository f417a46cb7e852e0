// Copies of the open database, or of the records of the server, in backups/ beside the program: one a day, also while the program stays open for a
// week, and one whenever fifty batches have been logged. Each is made and checked in a thread of its own, so that
// nobody waits for it. A second place may hold them too, and once a month the newest copy is put back into a
// scratch file and checked, since a copy is worth what can be had back from it.
#pragma once

#include "core/CopyJob.h"
#include "core/CopySettings.h"

#include <QElapsedTimer>
#include <QString>
#include <QTimer>
#include <atomic>
#include <cstdint>
#include <functional>
#include <future>
#include <optional>

namespace sorvanto {

struct Context;

class DailyBackup {
public:
    /// In milliseconds; startDelay: between startSoon and the first look; interval: between two looks; patience: how
    /// long stop() waits for a copy that is being made; late: after how long a second place that does not answer is told
    /// as failed.
    explicit DailyBackup(const Context& context, int startDelay = 2000, int interval = 60'000,
                         int patience = 2000, int late = 300'000);
    /// Waits for a copy that stop() has left.
    ~DailyBackup();
    DailyBackup(const DailyBackup&) = delete;
    DailyBackup& operator=(const DailyBackup&) = delete;

    /// From now on a copy is made whenever one is due. Failures are reported ("DailyBackup:copy").
    void startSoon();
    /// Gives a copy that is being made up; nothing of it is left. Where the disk or a share holds it longer than the
    /// patience, it is left to itself: the end of the program must not wait for it.
    void stop();
    /// Called after each copy that was made and checked.
    void whenCopied(std::function<void()> copied) { m_copied = std::move(copied); }
    /// Whether a copy is being made, in either place, or the first look has not been yet.
    bool running() const { return m_job.valid() || m_second.valid() || (m_started && !m_looked); }

private:
    void look();
    void begin();
    void finish();
    void beginSecond(bool justCopied);
    void finishSecond();
    void tellSecondWhenLate();
    bool isDue(const CopySettings& settings, std::int64_t batches);
    void note(const CopyResult& result);

    const Context& m_context;
    QTimer m_timer;
    std::future<CopyResult> m_job;
    std::future<void> m_second;  ///< into the second place
    std::atomic<bool> m_cancelled = false;
    std::function<void()> m_copied;
    int m_startDelay, m_interval, m_patience, m_late;
    bool m_started = false, m_looked = false;
    bool m_waitLonger = false;  ///< something failed
    std::optional<std::int64_t> m_batchesAtFirstLook;
    QString m_identity;          ///< of the database that the copy under way is of
    std::int64_t m_batches = 0;  ///< that were logged when it began
    QString m_secondPlace;       ///< of the job under way, or begun behind it
    QElapsedTimer m_secondBegan;
    bool m_secondTold = false;  ///< as late, since the last copy
    QString m_rehearsal;        ///< the month, as "2026-03", when the copy under way is tried out as well
};

}  // namespace sorvanto
