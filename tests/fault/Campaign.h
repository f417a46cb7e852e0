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
    /// The state lasts through a power cut as soon as the deed is done.
    bool durable = true;
};

/// Plays the deed through and counts. What was tried is printed in one line.
void campaign(const Deed& deed);

/// A drawn part of the places in the normal run, all of them with SORVANTO_LONG=1. SEED draws another.
bool longRun();
unsigned seedOfRun();
template <class Item>
std::vector<Item> drawn(std::vector<Item> all, std::size_t most) {
    QRandomGenerator random(seedOfRun());
    while (!longRun() && all.size() > most)
        all.erase(all.begin() + random.bounded(static_cast<int>(all.size())));
    return all;
}

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
