#include "prices/PriceFile.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "prices/WorkbookParts.h"
#include "prices/XlsBook.h"
#include "prices/XlsxBook.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

// Control characters stand in no text.
bool isBinary(const QString& text) {
    for (const QChar each : QStringView(text).left(4096)) {
        if (each < u' ' && !each.isSpace())
            return true;
    }
    return false;
}

bool isWebPage(const QString& text) {
    const QString start = text.left(512).trimmed();
    return start.startsWith(u"<html"_s, Qt::CaseInsensitive) ||
           start.startsWith(u"<!doctype"_s, Qt::CaseInsensitive) ||
           start.startsWith(u"<table"_s, Qt::CaseInsensitive) ||
           start.startsWith(u"<?xml"_s, Qt::CaseInsensitive);
}

}  // namespace

PriceFile::PriceFile(const QString& path) {
    if (QFileInfo(path).size() > largestPriceFile) {
        m_fault = PriceFault::tooLarge;
        return;
    }
    try {
        m_bytes = platform::readFile(path, largestPriceFile);
    } catch (const platform::RuntimeError& failure) {
        m_fault = PriceFault::unreadable;
        m_detail = failure.description();
        return;
    }
    tellApart();
}

void PriceFile::tellApart() {
    if (isCompoundFile(m_bytes))
        m_workbook = std::make_unique<XlsBook>(m_bytes);
    else if (isZipFile(m_bytes))
        m_workbook = std::make_unique<XlsxBook>(m_bytes);
    if (m_workbook) {
        m_fault = m_workbook->fault();
    } else {
        m_encoding = detectedEncoding(m_bytes);
        const QString text = decoded(m_bytes.left(4096), m_encoding);
        if (text.trimmed().isEmpty())
            m_fault = PriceFault::empty;
        else if (isBinary(text))
            m_fault = PriceFault::notATable;
        else if (isWebPage(text))
            m_fault = PriceFault::webPage;
    }
}

QStringList PriceFile::sheets() const { return m_workbook ? m_workbook->sheets() : QStringList(); }

ReadTable PriceFile::readText(TextEncoding encoding, QChar separator, const PriceProgress& goesOn) const {
    return separated(decoded(m_bytes, encoding), separator, goesOn);
}

ReadTable PriceFile::readSheet(int sheet, const PriceProgress& goesOn) const {
    return m_workbook->read(sheet, goesOn);
}

}  // namespace sorvanto
