// The readers: poppler, a bar code reader, an .xls reader.
#include "Tools.h"

#include <QImageReader>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace tools {

QString output(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(120'000) || process.exitCode() != 0) {
        ADD_FAILURE() << qPrintable(program) << " " << qPrintable(arguments.join(' ')) << ": "
                      << process.errorString().toStdString() << "\n"
                      << process.readAllStandardError().toStdString();
        return {};
    }
    return QString::fromUtf8(process.readAllStandardOutput());
}

std::vector<Word> words(const QString& pdf) {
    static const QRegularExpression pattern(
        "<word xMin=\"([0-9.-]+)\" yMin=\"([0-9.-]+)\" xMax=\"([0-9.-]+)\" yMax=\"([0-9.-]+)\">(.*)</word>");
    std::vector<Word> all;
    int page = 0;
    for (const QString& line : output("pdftotext", {"-bbox", pdf, "-"}).split('\n')) {
        if (line.contains("<page "))
            ++page;
        const auto match = pattern.match(line);
        if (!match.hasMatch())
            continue;
        QString text = match.captured(5);
        text.replace("&lt;", "<").replace("&gt;", ">").replace("&quot;", "\"").replace("&amp;", "&");
        all.push_back({page, match.captured(1).toDouble(), match.captured(2).toDouble(),
                       match.captured(3).toDouble(), match.captured(4).toDouble(), text});
    }
    return all;
}

Word wordOf(const std::vector<Word>& all, const QString& text, int page) {
    QStringList had;
    for (const Word& word : all) {
        if (word.page == page && word.text == text)
            return word;
        had << word.text;
    }
    ADD_FAILURE() << "No word " << qPrintable(text) << " on page " << page << ", but "
                  << qPrintable(had.join(" "));
    return {};
}

QImage picture(const QString& pdf, int page, int dotsPerInch) {
    const QTemporaryDir folder;
    const QString stem = folder.filePath("page");
    output("pdftoppm", {"-r", QString::number(dotsPerInch), "-f", QString::number(page), "-l",
                        QString::number(page), "-png", "-gray", "-singlefile", pdf, stem});
    QImageReader::setAllocationLimit(512);
    QImage image(stem + ".png");
    EXPECT_FALSE(image.isNull());
    return image;
}

QStringList barCodes(const std::vector<QImage>& images) {
    const QTemporaryDir folder;
    QStringList arguments{"-q", "--raw", "-Sdisable", "-Scode39.enable"};
    for (std::size_t i = 0; i < images.size(); ++i) {
        arguments << folder.filePath(u"bars%1.png"_s.arg(i));
        EXPECT_TRUE(images[i].save(arguments.last()));
    }
    QProcess process;
    process.start("zbarimg", arguments);
    EXPECT_TRUE(process.waitForFinished(120'000));
    return QString::fromUtf8(process.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
}

QString cells(const QString& xls) {
    static const char* const script = R"(
import sys, xlrd
book = xlrd.open_workbook(sys.argv[1], formatting_info=True)
sheet = book.sheet_by_index(0)
kinds = {0: 'empty', 1: 'text', 2: 'number', 3: 'date', 4: 'flag', 5: 'error', 6: 'blank'}
print(sheet.name, sheet.nrows, sheet.ncols)
for r in range(sheet.nrows):
    for c in range(sheet.ncols):
        cell = sheet.cell(r, c)
        if cell.ctype in (0, 6):
            continue
        form = book.xf_list[cell.xf_index]
        value = cell.value
        if cell.ctype == 3:
            value = '%04d-%02d-%02d %02d:%02d:%02d' % xlrd.xldate_as_tuple(value, book.datemode)
        print(r, c, kinds[cell.ctype], repr(value), book.format_map[form.format_key].format_str,
              'bold' if book.font_list[form.font_index].weight >= 700 else 'plain', sep='|')
)";
    return output("/usr/bin/python3", {"-c", script, xls});
}

}  // namespace tools
