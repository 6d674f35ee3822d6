#include "editors/web/CardPageAccess.h"

#include <QFileInfo>

CardPageAccess::CardPageAccess(const QString& htmlFolder)
    : m_root(QFileInfo(htmlFolder).canonicalFilePath())
{
}

bool CardPageAccess::allows(const QUrl& url) const
{
    if (m_root.isEmpty() || !url.isLocalFile() || !url.host().isEmpty())
        return false;
    const QFileInfo file(url.toLocalFile());
    const QString path = file.canonicalFilePath();
    return file.isFile() && path.startsWith(m_root + u'/');
}
