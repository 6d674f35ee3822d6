#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// Writes a folder tree of clip files (a camera card or any folder) under a root.
class CardTreeBuilder {
public:
    explicit CardTreeBuilder(QString root);

    // Writes root/relativePath with the bytes (empty by default) and returns its absolute path.
    QString add(const QString& relativePath, const QByteArray& bytes = {});
    // Writes each relative path as an empty file.
    void addAll(const QStringList& relativePaths);
    QString path(const QString& relativePath) const;
    const QString& root() const { return m_root; }

private:
    QString m_root;
};
