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

/// As the engine compares lots: the case of the Latin letters makes no difference.
QString compared(const QString& lot) {
    QString alike = lot;
    for (QChar& letter : alike) {
        if (letter >= u'A' && letter <= u'Z')
            letter = QChar(letter.unicode() + (u'a' - u'A'));
    }
    return alike;
}

auto named(const Ingredient& ingredient) {
    return std::tuple(compared(ingredient.name), compared(ingredient.lot), compared(ingredient.ndc));
}

template <typename Row>
void newestFirst(std::vector<Row>& rows) {
    std::sort(rows.begin(), rows.end(), [](const Row& one, const Row& other) {
        return one.date != other.date ? one.date > other.date : other.key < one.key;
    });
}

template <typename Row>
void append(std::vector<Row>& all, std::vector<Row> more) {
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
            keys.insert(batch->first.key);
        return keys;
    }
    /// False where it was there before.
    bool add(int file, std::int64_t key, const QString& base) {
        return batches.emplace(TraceKey{file, key}, base).second;
    }
};

Tracer::Tracer(platform::ConnectionPtr database, const QStringList& folders) {
    ArchiveShelf shelf = archivesOf(database, folders);
    m_archives = std::move(shelf.present);
    m_absent = std::move(shelf.absent);
    m_files.emplace_back(std::move(database), 0);
    for (platform::ConnectionPtr& archive : shelf.open)
        m_files.emplace_back(std::move(archive), static_cast<int>(m_files.size()));
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
    std::stable_sort(all.begin(), all.end(), [](const Ingredient& one, const Ingredient& other) {
        return named(one) < named(other);
    });
    all.erase(std::unique(
                  all.begin(), all.end(),
                  [](const Ingredient& one, const Ingredient& other) { return named(one) == named(other); }),
              all.end());
    return all;
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
    if (m_lots.isEmpty()) {
        for (const TraceFile& file : m_files)
            m_lots += file.ingredientLots() + file.batchLots();
    }
    const bool isThere = m_lots.contains(text, Qt::CaseInsensitive);
    QStringList lots = similarLots(isThere ? text : text.trimmed(), m_lots);
    lots.removeDuplicates();
    lots.sort(Qt::CaseInsensitive);
    return lots;
}

/// Wave by wave: the batches made with the batches of the last wave.
Tracer::Reached Tracer::following(Reached reached) const {
    std::set<QString> done;
    QStringList lots;
    const auto addLots = [&](const TraceFile& file, const TraceFile::Keys& keys) {
        for (const TracedBatch& batch : file.batches(keys)) {
            if (!batch.lot.isEmpty() && done.insert(compared(batch.lot)).second)
                lots << batch.lot;
        }
    };
    for (std::size_t i = 0; i < m_files.size(); ++i)
        addLots(m_files[i], reached.keys(static_cast<int>(i)));
    while (!lots.isEmpty()) {
        const QStringList wave = std::exchange(lots, {});
        for (std::size_t i = 0; i < m_files.size(); ++i) {
            TraceFile::Keys fresh;
            for (const auto& [key, base] : m_files[i].batchesWithLots(wave)) {
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
    for (TracedPrescription& prescription : prescriptions) {
        if (prescription.key.file > 0)
            m_files.front().writePatient(prescription);
    }
}

namespace {

void finish(Recall& recall) {
    newestFirst(recall.batches);
    newestFirst(recall.uncertain);
    newestFirst(recall.prescriptions);
    std::set<TraceKey> patients;
    for (const TracedPrescription& prescription : recall.prescriptions)
        patients.insert(prescription.patient);
    recall.patients = static_cast<int>(patients.size());
}

}  // namespace

bool Tracer::lookForLackingLines() const {
    bool looked = false;
    for (const TraceFile& file : m_files)
        looked = file.lookForLackingLines() || looked;
    return looked;
}

void Tracer::nameUncertain(Recall& recall, const Reached& reached, const TraceDays& days) const {
    for (const TraceFile& file : m_files) {
        TraceFile::Keys keys = file.batchesThatLackLines();
        keys.merge(file.batchesWithoutLines());
        for (TracedBatch& batch : file.batches(keys)) {
            batch.lacksLines = !batch.hasNoLines;
            if (!reached.batches.contains(batch.key) && days.holds(batch.date))
                recall.uncertain.push_back(std::move(batch));
        }
    }
}

Recall Tracer::recallOf(const Reached& reached, const TraceDays& days) const {
    Recall recall = dressed(reached, days);
    nameUncertain(recall, reached, days);
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

std::vector<UsedIngredient> Tracer::contents(TraceKey batch) const {
    std::vector<UsedIngredient> all = m_files.at(static_cast<std::size_t>(batch.file)).linesOf(batch.key);
    std::set<QString> done;
    for (std::size_t at = 0; at < all.size(); ++at) {
        const QString lot = all[at].ingredient.lot;
        if (lot.isEmpty() || !done.insert(compared(lot)).second)
            continue;
        for (const TraceFile& file : m_files) {
            for (const std::int64_t base : file.batchesMadeAs(lot)) {
                for (UsedIngredient& line : file.linesOf(base)) {
                    line.base = lot;
                    all.push_back(std::move(line));
                }
            }
        }
    }
    return all;
}

}  // namespace sorvanto
