// The disk below one folder. What the program, its libraries and the database engine ask of the system for files
// there passes by here (Disk.cpp takes the place of the system's calls in this test program): it is written down
// in its order, and any one of these calls can be made to fail.
//   Disk disk(folder);              watches from here on
//   disk.fail({12, EIO, false});    the call number 12 fails
//   disk.operations()               what reached the disk, for Image
#pragma once

#include "Image.h"

#include <QString>
#include <map>
#include <unordered_map>
#include <vector>

namespace fault {

struct Plan {
    qsizetype call = -1;
    int code = 0;          ///< errno
    bool lasting = false;  ///< everything after it that needs the same, fails too
};

class Disk {
public:
    explicit Disk(QString folder);
    ~Disk();
    Disk(const Disk&) = delete;
    Disk& operator=(const Disk&) = delete;

    /// The system's own calls during its lifetime, unseen: for what a test does itself.
    class Unseen {
    public:
        Unseen();
        ~Unseen();
        Unseen(const Unseen&) = delete;
        Unseen& operator=(const Unseen&) = delete;
    };

    void fail(const Plan& plan) { m_plan = plan; }
    /// The planned failure has happened.
    bool struck() const { return m_struck; }
    /// How many calls there were, failed ones among them.
    qsizetype calls() const { return static_cast<qsizetype>(m_calls.size()); }
    /// Each call's kind, in order.
    const std::vector<Act>& acts() const { return m_calls; }
    const std::vector<Operation>& operations() const { return m_operations; }
    const Image& start() const { return m_start; }

    // For the calls that stand in the system's place.
    struct Open {
        QString name;
        int file = -1;  ///< -1: a folder
    };
    /// The path below the folder; nothing (null) for one elsewhere.
    QString below(const char* path) const;
    const Open* opened(int descriptor);
    void forget(int descriptor) { m_open.erase(descriptor); }
    void keep(int descriptor, const QString& name, bool folder);
    /// Counts the call; true: it has to fail, errno is set.
    bool refuses(Act act);
    void done(Operation operation);
    bool exists(const QString& name) const { return m_names.contains(name); }
    bool locksAreRefused() const { return m_struck && m_plan.lasting && m_refused == Act::Lock; }
    int fileOf(const QString& name);

private:
    bool failsToo(Act act) const;

    QString m_folder;
    Image m_start;
    std::vector<Act> m_calls;
    std::vector<Operation> m_operations;
    std::map<QString, int> m_names;
    std::unordered_map<int, Open> m_open;
    int m_files = 0;
    Plan m_plan;
    bool m_struck = false;
    Act m_refused = Act::Open;
};

}  // namespace fault
