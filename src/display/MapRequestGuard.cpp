#include "display/MapRequestGuard.h"

#include "display/DisplayLogging.h"

MapRequestGuard::MapRequestGuard(QObject* parent)
    : QWebEngineUrlRequestInterceptor(parent)
{
}

void MapRequestGuard::setTileUrl(const QString& tileTemplate)
{
    // The host part of the template, with "{s}"-like placeholders as any one
    // label (QUrl would percent-encode the braces, so it is cut by hand).
    const qsizetype schemeEnd = tileTemplate.indexOf(QLatin1String("://"));
    m_tileScheme.clear();
    m_tileHost = QRegularExpression();
    if (schemeEnd <= 0)
        return;
    m_tileScheme = tileTemplate.left(schemeEnd).toLower();
    QString authority = tileTemplate.mid(schemeEnd + 3);
    authority = authority.left(authority.indexOf(u'/'));
    m_tilePort = -1;
    const qsizetype colon = authority.lastIndexOf(u':');
    if (colon > 0 && !authority.endsWith(u'}')) {
        m_tilePort = authority.mid(colon + 1).toInt();
        authority = authority.left(colon);
    }
    QString pattern;
    static const QRegularExpression kPlaceholder(QStringLiteral("\\{[^}]*\\}"));
    qsizetype at = 0;
    for (auto it = kPlaceholder.globalMatch(authority); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        pattern += QRegularExpression::escape(authority.mid(at, match.capturedStart() - at));
        pattern += QStringLiteral("[a-z0-9-]+");
        at = match.capturedEnd();
    }
    pattern += QRegularExpression::escape(authority.mid(at));
    m_tileHost = QRegularExpression(
        QRegularExpression::anchoredPattern(pattern), QRegularExpression::CaseInsensitiveOption);
}

bool MapRequestGuard::allows(const QUrl& url) const
{
    const QString scheme = url.scheme().toLower();
    // The page itself and what it builds in memory.
    if (scheme == QLatin1String("qrc") || scheme == QLatin1String("data")
        || scheme == QLatin1String("blob") || scheme == QLatin1String("about"))
        return true;
    if (m_tileScheme.isEmpty() || scheme != m_tileScheme || !m_tileHost.isValid())
        return false;
    if (m_tilePort != -1 && url.port() != m_tilePort)
        return false;
    return m_tileHost.match(url.host()).hasMatch();
}

void MapRequestGuard::interceptRequest(QWebEngineUrlRequestInfo& info)
{
    if (allows(info.requestUrl()))
        return;
    qCDebug(lcDisplay) << "map page request refused:" << info.requestUrl();
    info.block(true);
}
