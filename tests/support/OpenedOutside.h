// Takes the files and folders that the desktop would open, for as long as it lives.
#pragma once

#include <QDesktopServices>
#include <QObject>
#include <QStringList>
#include <QUrl>

namespace support {

class OpenedOutside : public QObject {
    Q_OBJECT

public:
    OpenedOutside() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "take"); }
    ~OpenedOutside() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

    QStringList paths;

public slots:
    void take(const QUrl& url) { paths << url.toLocalFile(); }
};

}  // namespace support
