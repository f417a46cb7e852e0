// Finding a control by its name: child<QLineEdit>(window, "tabDetails/txtfrm_Name"). Each part of the path
// is searched for among all descendants of the part before it.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <stdexcept>

namespace support {

using namespace Qt::StringLiterals;

/// The names of all named descendants of that type, for messages.
template <class T>
QString namesBelow(const QObject& root) {
    QStringList names;
    for (const auto* found : root.findChildren<T*>()) {
        if (!found->objectName().isEmpty() && !found->objectName().startsWith("qt_"))
            names << found->objectName();
    }
    names.sort();
    return names.join(", ");
}

/// Never null: throws, with the names it did find, when there is no such control.
template <class T>
T* child(const QObject& root, const QString& path) {
    const QStringList parts = path.split('/');
    const QObject* parent = &root;
    for (const QString& part : parts.mid(0, parts.size() - 1)) {
        const QObject* next = parent->findChild<QObject*>(part);
        if (!next)
            throw std::runtime_error(u"No \"%1\" on the way to \"%2\". There are: %3"_s
                                         .arg(part, path, namesBelow<QObject>(*parent))
                                         .toStdString());
        parent = next;
    }
    T* found = parent->findChild<T*>(parts.last());
    if (!found)
        throw std::runtime_error(u"No %1 \"%2\". There are: %3"_s
                                     .arg(T::staticMetaObject.className(), path, namesBelow<T>(*parent))
                                     .toStdString());
    return found;
}

template <class T>
T* child(const QObject* root, const QString& path) {
    return child<T>(*root, path);
}

}  // namespace support
