#pragma once

#include <QRegularExpression>
#include <QString>
#include <QUrl>
#include <QWebEngineUrlRequestInterceptor>

// Lets the map page reach its own resources and the tile server, nothing
// else: no other host, no local file. The tile server is given as the tile
// template ("https://{s}.tile.example.org/{z}/{x}/{y}.png"); placeholders in
// its host stand for any one name part.
class MapRequestGuard : public QWebEngineUrlRequestInterceptor {
    Q_OBJECT
public:
    explicit MapRequestGuard(QObject* parent = nullptr);

    void setTileUrl(const QString& tileTemplate);
    bool allows(const QUrl& url) const;

    void interceptRequest(QWebEngineUrlRequestInfo& info) override;

private:
    QString m_tileScheme;
    QRegularExpression m_tileHost;
    int m_tilePort = -1;
};
