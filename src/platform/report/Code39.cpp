// Takes the modules of the symbol from the encoder library; nothing is drawn here.
#include "platform/report/Code39.h"

#include <QByteArray>
#include <QHash>
#include <memory>
#include <numeric>
#include <zint.h>

namespace platform {

namespace {
using Symbol = std::unique_ptr<zint_symbol, decltype(&ZBarcode_Delete)>;

bool encodable(const QByteArray& text) {
    static const QByteArray known = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%";
    for (const char character : text) {
        if (!known.contains(character))
            return false;
    }
    return !text.isEmpty();
}

std::vector<int> encoded(const QByteArray& text) {
    const Symbol symbol(ZBarcode_Create(), &ZBarcode_Delete);
    if (!symbol)
        return {};
    symbol->symbology = BARCODE_CODE39;
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.constData());
    if (ZBarcode_Encode(symbol.get(), bytes, static_cast<int>(text.size())) >= ZINT_ERROR)
        return {};
    std::vector<int> widths;
    bool dark = false;
    for (int i = 0; i < symbol->width; ++i) {
        const bool module = symbol->encoded_data[0][i / 8] >> (i % 8) & 1;
        if (module == dark && !widths.empty())
            ++widths.back();
        else
            widths.push_back(1);
        dark = module;
    }
    return widths;
}
}  // namespace

std::vector<int> Code39::pattern(const QString& text) {
    const QByteArray upper = text.toUpper().toUtf8();
    if (!encodable(upper))
        return {};
    // All labels of a sheet carry the same few texts.
    static QHash<QByteArray, std::vector<int>> made;
    const auto place = made.constFind(upper);
    if (place != made.constEnd())
        return *place;
    if (made.size() > 256)
        made.clear();
    return *made.insert(upper, encoded(upper));
}

int Code39::modules(const std::vector<int>& pattern) {
    return std::accumulate(pattern.begin(), pattern.end(), 0);
}

bool Code39::fits(const QString& text, int width) {
    const std::vector<int> bars = pattern(text);
    return !bars.empty() && (modules(bars) + 2 * quietZone) * leastDots * dot <= width;
}

}  // namespace platform
