#include "CardTreeBuilder.h"

#include "TestFiles.h"

#include <QDir>

CardTreeBuilder::CardTreeBuilder(QString root)
    : m_root(QDir(root).absolutePath())
{
    QDir().mkpath(m_root);
}

QString CardTreeBuilder::add(const QString& relativePath, const QByteArray& bytes)
{
    const QString full = path(relativePath);
    TestFiles::write(full, bytes);
    return full;
}

void CardTreeBuilder::addAll(const QStringList& relativePaths)
{
    for (const QString& relativePath : relativePaths)
        add(relativePath);
}

QString CardTreeBuilder::path(const QString& relativePath) const
{
    return m_root + u'/' + relativePath;
}
