// Comparing and renewing golden files.
#include "Golden.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace support {
namespace {

void renew(const QString& path, const QByteArray& content) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
    ASSERT_EQ(file.write(content), content.size());
}

QString firstDifference(const QString& expected, const QString& actual) {
    const QStringList left = expected.split('\n');
    const QStringList right = actual.split('\n');
    for (qsizetype i = 0; i < qMax(left.size(), right.size()); ++i) {
        const QString wanted = i < left.size() ? left.at(i) : "(no such line)";
        const QString got = i < right.size() ? right.at(i) : "(no such line)";
        if (wanted != got)
            return u"line %1\n  expected: %2\n  actual:   %3"_s.arg(i + 1).arg(wanted, got);
    }
    return {};
}

}  // namespace

void expectGolden(const QString& name, const QString& text) {
    const QString path = QString::fromUtf8(SORVANTO_GOLDEN "/") + name;
    if (qEnvironmentVariableIntValue("SORVANTO_UPDATE_GOLDEN") == 1) {
        renew(path, text.toUtf8());
        return;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        ADD_FAILURE() << "No golden file " << qPrintable(name)
                      << "; SORVANTO_UPDATE_GOLDEN=1 writes it. The text is:\n"
                      << qPrintable(text);
        return;
    }
    const QString expected = QString::fromUtf8(file.readAll());
    if (expected != text)
        ADD_FAILURE() << qPrintable(name) << " differs at " << qPrintable(firstDifference(expected, text))
                      << "\nThe whole text is:\n"
                      << qPrintable(text);
}

}  // namespace support
