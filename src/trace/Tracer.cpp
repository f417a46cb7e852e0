#include "trace/Tracer.h"

#include "trace/ArchiveShelf.h"
#include "trace/LotLikeness.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

bool isCapital(QChar letter) { return letter >= u'A' && letter <= u'Z'; }

/// As the engine compares lots: the case of the Latin letters makes no difference.
QString compared(const QString& lot) {
    if (std::none_of(lot.begin(), lot.end(), isCapital))
        return lot;
    QString alike = lot;
    for (QChar& letter : alike) {
        if (isCapital(letter))
            letter = QChar(letter.unicode() + (u'a' - u'A'));
    }
    return alike;
}

using IngredientName = std::tuple<QString, QString, QString>;

IngredientName named(const Ingredient& ingredient) {
    return {compared(ingredient.name), compared(ingredient.lot), compared(ingredient.ndc)};
}

template <typename Row>
void append(std::vector<Row>& all, std::vector<Row> more) {
    if (all.empty())
        all = std::move(more);
    else
        std::move(more.begin(), more.end(), std::back_inserter(all));
}

}  // namespace

/// Batches that belong to what is asked, each with the lot of the stock base that led to it.
struct Tracer::Reached {
    std::map<TraceKey, QString> batches;

    TraceFile::Keys keys(int file) const {
        TraceFile::Keys keys;
        for (auto batch = batches.lower_bound({file, 0}); batch != batches.end() && batch->first.file == file;
             ++batch)
            keys.insert(keys.end(), batch->first.key);
        return keys;
    }
    /// False where it was there before.
    bool add(int file, std::int64_t key, const QString& base) {
        return batches.emplace(TraceKey{file, key}, base).second;
    }
};

template <typename Before>
auto Tracer::paced(Before before) const {
    return [this, before](const auto& one, const auto& other) {
        m_pace->step();
        return before(one, other);
    };
}

template <typename Row>
void Tracer::newestFirst(std::vector<Row>& rows) const {
    std::sort(rows.begin(), rows.end(), paced([](const Row& one, const Row& other) {
                  return one.date != other.date ? one.date > other.date : other.key < one.key;
              }));
}

Tracer::Tracer(platform::ConnectionPtr database, const QStringList& folders)
    : m_pace(std::make_shared<TracePace>()) {
    ArchiveShelf shelf = archivesOf(database, folders);
    m_archives = std::move(shelf.present);
    m_absent = std::move(shelf.absent);
    m_files.emplace_back(std::move(database), 0, m_pace);
    for (platform::ConnectionPtr& archive : shelf.open)
        m_files.emplace_back(std::move(archive), static_cast<int>(m_files.size()), m_pace);
}

std::vector<std::int64_t> Tracer::state() const {
    std::vector<std::int64_t> all;
    for (const TraceFile& file : m_files)
        all.push_back(file.state());
    return all;
}

std::int64_t Tracer::searched() const {
    std::int64_t all = 0;
    for (const TraceFile& file : m_files)
        all += file.batchCount();
    return all;
}

template <typename Ask>
std::vector<Ingredient> Tracer::gathered(Ask ask) const {
    std::vector<Ingredient> all;
    for (const TraceFile& file : m_files)
        append(all, ask(file));
    std::vector<std::pair<IngredientName, std::size_t>>
        order;  // of what is told apart by its name, what was found first
    order.reserve(all.size());
    for (std::size_t place = 0; place < all.size(); ++place)
        order.emplace_back(named(all[place]), place);
    std::sort(order.begin(), order.end(), paced(std::less<>()));
    std::vector<Ingredient> different;
    const IngredientName* last = nullptr;
    for (const auto& [name, place] : order) {
        if (!last || *last != name)
            different.push_back(std::move(all[place]));
        last = &name;
    }
    return different;
}

TraceHits Tracer::find(const QString& text) const {
    using By = TraceHits::By;
    TraceHits hits = find(text, By::Lot);
    if (!hits.ingredients.empty())
        return hits;
    TraceHits byNdc = find(text, By::Ndc);
    if (!byNdc.ingredients.empty())
        byNdc.batches = std::move(hits.batches);
    else if (hits.batches.empty())
        return find(text, By::Name);
    else
        return hits;
    return byNdc;
}

// Lots may be stored with blanks around them, even with such as can't be seen.
TraceHits Tracer::find(const QString& text, TraceHits::By by) const {
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return {};
    if (by != TraceHits::By::Name && trimmed != text) {
        TraceHits hits = findAsItIs(text, by);
        if (hits.by != TraceHits::By::Nothing)
            return hits;
    }
    return findAsItIs(trimmed, by);
}

TraceHits Tracer::findAsItIs(const QString& wanted, TraceHits::By by) const {
    using By = TraceHits::By;
    TraceHits hits;
    if (by != By::Batch) {
        hits.ingredients = gathered([&](const TraceFile& file) {
            return by == By::Lot   ? file.ingredientsOfLot(wanted)
                   : by == By::Ndc ? file.ingredientsOfNdc(wanted)
                                   : file.ingredientsNamed(wanted);
        });
    }
    if (by == By::Lot || by == By::Batch) {
        for (const TraceFile& file : m_files)
            append(hits.batches, file.batches(file.batchesMadeAs(wanted)));
        newestFirst(hits.batches);
    }
    if (!hits.ingredients.empty())
        hits.by = by;
    else if (!hits.batches.empty())
        hits.by = By::Batch;
    if (hits.by != By::Nothing)
        hits.text = wanted;
    return hits;
}

QStringList Tracer::similarTo(const QString& text) {
    constexpr qsizetype lotsAtOnce = 500;
    if (m_lots.isEmpty()) {
        QStringList lots;
        for (const TraceFile& file : m_files)
            lots += file.ingredientLots() + file.batchLots();
        m_lots = std::move(lots);
    }
    const auto pieces = [&](const auto& take) {
        for (qsizetype first = 0; first < m_lots.size(); first += lotsAtOnce) {
            m_pace->turn();
            take(m_lots.mid(first, lotsAtOnce));
        }
    };
    bool isThere = false;
    pieces([&](const QStringList& lots) { isThere = isThere || lots.contains(text, Qt::CaseInsensitive); });
    QStringList similar;
    pieces([&](const QStringList& lots) { similar += similarLots(isThere ? text : text.trimmed(), lots); });
    similar.removeDuplicates();
    std::sort(similar.begin(), similar.end(), paced([](const QString& one, const QString& other) {
                  return one.compare(other, Qt::CaseInsensitive) < 0;
              }));
    return similar;
}

std::optional<std::size_t> Tracer::placeOf(std::int64_t chemical,
                                           const std::vector<Ingredient>& ingredients) const {
    const std::optional<Ingredient> wanted = m_files.front().chemical(chemical);
    if (!wanted || chemicalOf(*wanted) != chemical)
        return std::nullopt;
    const IngredientName name = named(*wanted);
    for (std::size_t place = 0; place < ingredients.size(); ++place) {
        m_pace->step();
        if (named(ingredients[place]) == name)
            return place;
    }
    return std::nullopt;
}

/// Wave by wave: the batches made with the batches of the last wave.
Tracer::Reached Tracer::following(Reached reached) const {
    std::set<QString> done;
    QStringList lots;
    const auto addLots = [&](const TraceFile& file, const TraceFile::Keys& keys) {
        if (keys.empty())
            return;
        for (const auto& [key, lot] : file.lotsOf(keys)) {
            if (done.insert(compared(lot)).second)
                lots << lot;
        }
    };
    for (std::size_t i = 0; i < m_files.size(); ++i)
        addLots(m_files[i], reached.keys(static_cast<int>(i)));
    while (!lots.isEmpty()) {
        const QStringList wave = std::exchange(lots, {});
        for (std::size_t i = 0; i < m_files.size(); ++i) {
            TraceFile::Keys fresh;
            for (const auto& [key, base] : m_files[i].batchesWithLots(wave)) {
                m_pace->step();
                if (reached.add(static_cast<int>(i), key, base))
                    fresh.insert(key);
            }
            addLots(m_files[i], fresh);
        }
    }
    return reached;
}

Recall Tracer::dressed(const Reached& reached, const TraceDays& days) const {
    Recall recall;
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        TraceFile::Keys inTime;
        for (TracedBatch& batch : m_files[i].batches(reached.keys(static_cast<int>(i)))) {
            if (!days.holds(batch.date)) {
                ++recall.hiddenBatches;
                continue;
            }
            inTime.insert(batch.key.key);
            batch.base = reached.batches.at(batch.key);
            recall.batches.push_back(std::move(batch));
        }
        append(recall.prescriptions, m_files[i].prescriptionsOf(inTime));
    }
    return recall;
}

// Whoever moved since an archive was made is called where he is now.
void Tracer::bringUpToDate(std::vector<TracedPrescription>& prescriptions) const {
    TraceFile::Keys keys;
    for (const TracedPrescription& prescription : prescriptions) {
        if (prescription.key.file > 0)
            keys.insert(prescription.patient.key);
    }
    if (keys.empty())
        return;
    const std::map<std::int64_t, TracedPatient> patients = m_files.front().patients(keys);
    for (TracedPrescription& prescription : prescriptions) {
        const auto known = patients.find(prescription.patient.key);
        if (prescription.key.file == 0 || known == patients.end())
            continue;
        prescription.patientName = known->second.name;
        prescription.phone = known->second.phone;
    }
}

void Tracer::finish(Recall& recall) const {
    newestFirst(recall.batches);
    newestFirst(recall.prescriptions);
    std::set<TraceKey> patients;
    for (const TracedPrescription& prescription : recall.prescriptions) {
        m_pace->step();
        patients.insert(prescription.patient);
    }
    recall.patients = static_cast<int>(patients.size());
}

bool Tracer::lookForLackingLines() const {
    bool looked = false;
    for (const TraceFile& file : m_files)
        looked = file.lookForLackingLines() || looked;
    return looked;
}

std::size_t Tracer::batchesThatLackLines() const {
    std::size_t all = 0;
    for (const TraceFile& file : m_files)
        all += file.batchesThatLackLines().size();
    return all;
}

// A batch that belongs there but was made on other days is of other days here as well.
void Tracer::nameUncertain(Recall& recall, const TraceDays& days) const {
    std::set<TraceKey> certain;
    for (const TracedBatch& batch : recall.batches) {
        m_pace->step();
        certain.insert(batch.key);
    }
    recall.uncertain.clear();
    for (const TraceFile& file : m_files) {
        TraceFile::Keys keys = file.batchesThatLackLines();
        keys.merge(file.batchesWithoutLines());
        for (TracedBatch& batch : file.batches(keys)) {
            batch.lacksLines = !batch.hasNoLines;
            if (!certain.contains(batch.key) && days.holds(batch.date))
                recall.uncertain.push_back(std::move(batch));
        }
    }
    newestFirst(recall.uncertain);
}

Recall Tracer::recallOf(const Reached& reached, const TraceDays& days) const {
    Recall recall = dressed(reached, days);
    nameUncertain(recall, days);
    bringUpToDate(recall.prescriptions);
    finish(recall);
    return recall;
}

Recall Tracer::whereWent(const std::vector<Ingredient>& ingredients, const QString& batchLot,
                         const TraceDays& days) const {
    Reached reached;
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        TraceFile::Keys keys;
        if (!batchLot.isEmpty())
            keys = m_files[i].batchesMadeAs(batchLot);
        keys.merge(m_files[i].batchesWith(ingredients));
        for (const std::int64_t key : keys)
            reached.add(static_cast<int>(i), key, {});
    }
    return recallOf(following(std::move(reached)), days);
}

Recall Tracer::madeOf(std::int64_t formula, const TraceDays& days) const {
    Reached reached;
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        for (const std::int64_t key : m_files[i].batchesMadeOf(formula))
            reached.add(static_cast<int>(i), key, {});
    }
    return recallOf(following(std::move(reached)), days);
}

Recall Tracer::dispensedTo(std::int64_t patient, const TraceDays& days) const {
    Recall recall;
    Reached reached;
    for (const TraceFile& file : m_files) {
        for (TracedPrescription& prescription : file.prescriptionsFor(patient)) {
            if (!days.holds(prescription.date)) {
                ++recall.hiddenPrescriptions;
                continue;
            }
            reached.batches.emplace(prescription.batch, QString());
            recall.prescriptions.push_back(std::move(prescription));
        }
    }
    recall.batches = dressed(reached, {}).batches;
    bringUpToDate(recall.prescriptions);
    finish(recall);
    return recall;
}

namespace {

/// The lines of the lots of some others, in the order of those.
QStringList lotsOf(const std::vector<UsedIngredient>& lines, std::size_t from, std::set<QString>& done) {
    QStringList lots;
    for (std::size_t at = from; at < lines.size(); ++at) {
        const QString& lot = lines[at].ingredient.lot;
        if (!lot.isEmpty() && done.insert(compared(lot)).second)
            lots << lot;
    }
    return lots;
}

}  // namespace

std::vector<UsedIngredient> Tracer::contents(TraceKey batch) const {
    std::vector<UsedIngredient> all =
        m_files.at(static_cast<std::size_t>(batch.file)).linesOf({batch.key})[batch.key];
    std::set<QString> done;
    for (std::size_t from = 0; from < all.size();) {
        const QStringList lots = lotsOf(all, std::exchange(from, all.size()), done);
        if (!lots.isEmpty())
            append(all, linesMadeAs(lots));
    }
    return all;
}

std::vector<UsedIngredient> Tracer::linesMadeAs(const QStringList& lots) const {
    std::map<QString, std::vector<UsedIngredient>> byLot;
    for (const TraceFile& file : m_files) {
        TraceFile::Keys keys;
        const auto bases = file.batchesMadeAs(lots);
        for (const auto& [key, lot] : bases)
            keys.insert(key);
        if (keys.empty())
            continue;
        auto lines = file.linesOf(keys);
        for (const auto& [key, lot] : bases)
            append(byLot[compared(lot)], std::move(lines[key]));
    }
    std::vector<UsedIngredient> all;
    for (const QString& lot : lots) {
        for (UsedIngredient& line : byLot[compared(lot)]) {
            line.base = lot;
            all.push_back(std::move(line));
        }
    }
    return all;
}

}  // namespace sorvanto
