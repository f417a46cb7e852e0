#include "prices/XlsxBook.h"

#include "prices/WorkbookParts.h"

#include <QMap>
#include <QXmlStreamReader>
#include <optional>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

/// The text of an element that may be parted into differently looking runs; how it is pronounced is left out.
QString textOf(QXmlStreamReader& xml) {
    const QString element = xml.name().toString();
    QString text;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isEndElement() && xml.name() == element)
            break;
        if (xml.isStartElement() && xml.name() == "rPh"_L1)
            xml.skipCurrentElement();
        else if (xml.isStartElement() && xml.name() == "t"_L1)
            text += xml.readElementText(QXmlStreamReader::IncludeChildElements);
    }
    return text;
}

/// Column of a cell's name, from 0: 27 for "AB12"; nothing without letters.
std::optional<int> columnOf(QStringView cell) {
    int column = 0;
    for (const QChar letter : cell) {
        if (letter < u'A' || letter > u'Z' || column > mostPriceColumns)
            break;
        column = column * 26 + (letter.unicode() - u'A') + 1;
    }
    return column > 0 ? std::optional(column - 1) : std::nullopt;
}

/// Fills a table with the cells of a sheet's XML.
class SheetXml {
public:
    SheetXml(const QByteArray& part, const QStringList& strings)
        : m_xml(part), m_size(part.size()), m_strings(strings) {}

    ReadTable read(const PriceProgress& goesOn) {
        PriceTable table;
        for (int rows = 0; !m_xml.atEnd();) {
            m_xml.readNext();
            if (!m_xml.isStartElement())
                continue;
            if (m_xml.name() == "row"_L1) {
                startRow();
                if (goesOn && ++rows % rowsBetweenAsks == 0 && !goesOn(done()))
                    return {{}, PriceFault::stopped, {}};
            } else if (m_xml.name() == "c"_L1 && !takeCell(table)) {
                return {{}, PriceFault::tooLarge, {}};
            }
        }
        if (m_xml.hasError())
            return {{}, PriceFault::broken, {}};
        return readWhole(std::move(table));
    }

private:
    double done() const { return static_cast<double>(m_xml.characterOffset()) / static_cast<double>(m_size); }
    void startRow() {
        bool given = false;
        const int number = m_xml.attributes().value("r"_L1).toInt(&given);
        m_row = given ? number - 1 : m_row + 1;
        m_column = -1;
    }
    bool takeCell(PriceTable& table) {
        const QXmlStreamAttributes attributes = m_xml.attributes();
        m_column = columnOf(attributes.value("r"_L1)).value_or(m_column + 1);
        const QString kind = attributes.value("t"_L1).toString();
        PriceCell cell;
        while (m_xml.readNextStartElement()) {
            if (m_xml.name() == "v"_L1)
                cell = cellOf(kind, m_xml.readElementText());
            else if (m_xml.name() == "is"_L1)
                cell = {textOf(m_xml), false};
            else
                m_xml.skipCurrentElement();
        }
        return cell.text.isEmpty() || putCell(table, m_row, m_column, std::move(cell));
    }
    PriceCell cellOf(const QString& kind, const QString& value) const {
        if (kind == "s"_L1)
            return {m_strings.value(value.toInt()), false};
        bool isNumber = kind.isEmpty() || kind == "n"_L1;
        const double number = isNumber ? value.toDouble(&isNumber) : 0;
        return isNumber ? PriceCell{numberInCell(number), true} : PriceCell{value, false};
    }

    QXmlStreamReader m_xml;
    qsizetype m_size;
    const QStringList& m_strings;
    int m_row = -1, m_column = -1;
};

/// Paths of the workbook's parts by their names within it.
QMap<QString, QByteArray> relations(const QByteArray& file) {
    QMap<QString, QByteArray> paths;
    QXmlStreamReader xml(partOf(file, "xl/_rels/workbook.xml.rels").bytes);
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement() || xml.name() != "Relationship"_L1)
            continue;
        const QByteArray target = xml.attributes().value("Target"_L1).toUtf8();
        paths.insert(xml.attributes().value("Id"_L1).toString(),
                     target.startsWith('/') ? target.mid(1) : "xl/" + target);
    }
    return paths;
}

}  // namespace

XlsxBook::XlsxBook(QByteArray file) : m_file(std::move(file)) {
    m_fault = readSheets();
    if (m_fault == PriceFault::none)
        m_fault = readStrings();
}

PriceFault XlsxBook::readSheets() {
    const WorkbookPart part = partOf(m_file, "xl/workbook.xml");
    if (part.fault != PriceFault::none)
        return part.fault;
    const QMap<QString, QByteArray> paths = relations(m_file);
    QXmlStreamReader xml(part.bytes);
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement() || xml.name() != "sheet"_L1)
            continue;
        QString name, id;
        for (const QXmlStreamAttribute& attribute : xml.attributes()) {
            if (attribute.name() == "name"_L1)
                name = attribute.value().toString();
            else if (attribute.qualifiedName() != attribute.name() && attribute.name() == "id"_L1)
                id = attribute.value().toString();
        }
        if (const QByteArray path = paths.value(id); path.contains("/worksheets/")) {
            m_sheets << name;
            m_paths.push_back(path);
        }
    }
    return xml.hasError() || m_sheets.isEmpty() ? PriceFault::broken : PriceFault::none;
}

PriceFault XlsxBook::readStrings() {
    const WorkbookPart part = partOf(m_file, "xl/sharedStrings.xml");
    if (part.fault != PriceFault::none)
        return part.fault == PriceFault::notATable ? PriceFault::none : part.fault;
    QXmlStreamReader xml(part.bytes);
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == "si"_L1)
            m_strings << textOf(xml);
    }
    return xml.hasError() ? PriceFault::broken : PriceFault::none;
}

ReadTable XlsxBook::read(int sheet, const PriceProgress& goesOn) const {
    const WorkbookPart part = partOf(m_file, m_paths.at(static_cast<std::size_t>(sheet)));
    if (part.fault != PriceFault::none)
        return {{}, part.fault == PriceFault::notATable ? PriceFault::broken : part.fault, {}};
    return SheetXml(part.bytes, m_strings).read(goesOn);
}

}  // namespace sorvanto
