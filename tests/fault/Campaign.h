// One deed of the program under every failure of its disk: each of its calls fails, the process is killed behind
// each of them, the power goes behind each of them. After each the database is sound, what the deed changes is as
// it was or as it shall be, and a deed that did not get through says so.
#pragma once

#include "World.h"

#include <functional>
#include <set>
#include <string>

namespace fault {

struct Deed {
    const char* name;
    World::Window window = World::Window::Open;
    /// Up to the moment before the deed.
    std::function<void(World&)> prepare{};
    std::function<void(World&)> act{};
    /// What the deed is about, read from the folder past the program.
    std::function<std::string(const QString& folder)> state{};
    /// States between old and new are those that stand between two statements of the program; the others are none.
    bool inSteps = false;
    /// A failure needs no words.
    bool silent = false;
    /// It writes a file of the user's own choice, which may be read as his custom is.
    bool usersFile = false;
    /// The state lasts through a power cut as soon as the deed is done.
    bool durable = true;
};

/// Plays the deed through and counts. What was tried is printed in one line.
void campaign(const Deed& deed);

bool longRun();
unsigned seedOfRun();
/// 0 to count - 1, shuffled by the seed.
std::vector<std::size_t> drawnOrder(std::size_t count);

/// A part of so many, drawn by the seed: at least one of each kind, also where these are more than most.
template <class Item, class KindOf>
std::vector<Item> sample(const std::vector<Item>& all, std::size_t most, KindOf kindOf) {
    const std::vector<std::size_t> order = drawnOrder(all.size());
    std::set<std::decay_t<decltype(kindOf(all.front()))>> kinds;
    std::set<std::size_t> taken;
    for (const std::size_t index : order) {
        if (kinds.insert(kindOf(all[index])).second)
            taken.insert(index);
    }
    for (const std::size_t index : order) {
        if (taken.size() < most)
            taken.insert(index);
    }
    std::vector<Item> part;
    for (const std::size_t index : taken)
        part.push_back(all[index]);
    return part;
}
template <class Item>
std::vector<Item> sample(const std::vector<Item>& all, std::size_t most) {
    return sample(all, most, [](const Item&) { return 0; });
}

/// A drawn part of the places in the normal run, all of them with SORVANTO_LONG=1. SEED draws another.
template <class Item, class KindOf>
std::vector<Item> drawn(const std::vector<Item>& all, std::size_t most, KindOf kindOf) {
    return longRun() ? all : sample(all, most, kindOf);
}
template <class Item>
std::vector<Item> drawn(const std::vector<Item>& all, std::size_t most) {
    return drawn(all, most, [](const Item&) { return 0; });
}

/// Without a custom of the session that hides files.
class OpenHanded {
public:
    OpenHanded();
    ~OpenHanded();
    OpenHanded(const OpenHanded&) = delete;
    OpenHanded& operator=(const OpenHanded&) = delete;

private:
    unsigned m_mask;
};
/// Files and folders that were made or replaced by these are readable by their owner alone; locks name no patients.
void expectOwnersAlone(const std::vector<Operation>& operations, const QString& folder);

/// What the last operation before that place was.
Act actBefore(const std::vector<Operation>& operations, std::size_t count);

/// The failures that a call of that kind can meet.
struct Failure {
    int code;
    bool lasting;
    const char* word;
};
std::vector<Failure> failuresOf(Act act);

/// A folder to lay images out in, in memory where the system offers that.
const QString& scratch();

std::string described(const std::vector<Operation>& operations, std::size_t count);

}  // namespace fault
