#include "prices/WorkbookParts.h"

#include "platform/basic/Decimal.h"

#include <QList>
#include <algorithm>
#include <cmath>
#include <memory>

// A word of the toolkit and a member's name in the library.
#pragma push_macro("signals")
#undef signals
#include <gsf/gsf.h>
#pragma pop_macro("signals")

namespace sorvanto {
namespace {

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <class Object>
using Held = std::unique_ptr<Object, Unref>;

constexpr int mostPlaces = 300;  // of a number that is written out

// What the library says of a broken file is said by the fault.
void startLibrary() {
    gsf_init();
    for (const char* domain : {"libgsf:msole", "libgsf:zip"})
        g_log_set_handler(
            domain, static_cast<GLogLevelFlags>(G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING),
            [](const gchar*, GLogLevelFlags, const gchar*, gpointer) {}, nullptr);
}

Held<GsfInput> inputOf(const QByteArray& file) {
    static const bool ready = (startLibrary(), true);
    Q_UNUSED(ready)
    return Held<GsfInput>(
        gsf_input_memory_new(reinterpret_cast<const guint8*>(file.constData()), file.size(), FALSE));
}

WorkbookPart contentOf(GsfInput* input) {
    if (!input)
        return {{}, PriceFault::notATable};
    const gsf_off_t size = gsf_input_size(input);
    if (size > largestPriceFile)
        return {{}, PriceFault::tooLarge};
    WorkbookPart part;
    part.bytes.resize(size);
    if (size > 0 &&
        !gsf_input_read(input, static_cast<std::size_t>(size), reinterpret_cast<guint8*>(part.bytes.data())))
        return {{}, PriceFault::broken};
    return part;
}

}  // namespace

bool isCompoundFile(const QByteArray& file) { return file.startsWith("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"); }

bool isZipFile(const QByteArray& file) { return file.startsWith("PK\x03\x04"); }

WorkbookPart streamOf(const QByteArray& compoundFile, const QByteArray& name) {
    const Held<GsfInput> input = inputOf(compoundFile);
    const Held<GsfInfile> container(gsf_infile_msole_new(input.get(), nullptr));
    if (!container)
        return {{}, PriceFault::broken};
    const Held<GsfInput> child(gsf_infile_child_by_name(container.get(), name.constData()));
    return contentOf(child.get());
}

WorkbookPart partOf(const QByteArray& zipFile, const QByteArray& path) {
    const Held<GsfInput> input = inputOf(zipFile);
    Held<GsfInfile> folder(gsf_infile_zip_new(input.get(), nullptr));
    if (!folder)
        return {{}, PriceFault::broken};
    const QList<QByteArray> names = path.split('/');
    for (const QByteArray& name : names.first(names.size() - 1)) {
        GsfInput* inner = gsf_infile_child_by_name(folder.get(), name.constData());
        if (!inner || !GSF_IS_INFILE(inner)) {
            g_clear_object(&inner);
            return {{}, PriceFault::notATable};
        }
        folder.reset(GSF_INFILE(inner));
    }
    const Held<GsfInput> child(gsf_infile_child_by_name(folder.get(), names.last().constData()));
    return contentOf(child.get());
}

QString numberInCell(double value) {
    if (!std::isfinite(value))
        return {};
    const auto number = platform::Decimal::fromDouble(value);
    if (std::abs(number.point) > mostPlaces)
        return QString::number(value);
    return QString::fromLatin1(
        number.fixed(std::max(static_cast<int>(number.digits.size()) - number.point, 0)));
}

bool putCell(PriceTable& table, int row, int column, PriceCell cell) {
    if (row < 0 || column < 0 || row >= mostPriceRows)
        return false;
    if (column >= mostPriceColumns)
        return cell.text.isEmpty();
    if (static_cast<std::size_t>(row) >= table.rows.size())
        table.rows.resize(static_cast<std::size_t>(row) + 1);
    PriceRow& cells = table.rows[static_cast<std::size_t>(row)];
    if (static_cast<std::size_t>(column) >= cells.size())
        cells.resize(static_cast<std::size_t>(column) + 1);
    cells[static_cast<std::size_t>(column)] = std::move(cell);
    return true;
}

}  // namespace sorvanto
