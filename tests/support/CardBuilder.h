#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

// A camera card in a temporary folder: its setting folder (spelt "SETTING"
// or "setting") with setup.cfg, default.cfg, blackbox.cfg, lang/ver.dat.
class CardBuilder {
public:
    CardBuilder();

    QString root() const { return m_dir.path(); }
    // <root>/<settingDir>/<relative>
    QString path(
        const QString& relative, const QString& settingDir = QStringLiteral("SETTING")) const;

    CardBuilder& file(const QString& relative, const QByteArray& bytes,
        const QString& settingDir = QStringLiteral("SETTING"));
    CardBuilder& setupCfg(
        const QByteArray& bytes, const QString& settingDir = QStringLiteral("SETTING"))
    {
        return file(QStringLiteral("setup.cfg"), bytes, settingDir);
    }
    CardBuilder& defaultCfg(const QByteArray& bytes)
    {
        return file(QStringLiteral("default.cfg"), bytes);
    }
    CardBuilder& blackboxCfg(
        const QByteArray& bytes, const QString& settingDir = QStringLiteral("SETTING"))
    {
        return file(QStringLiteral("blackbox.cfg"), bytes, settingDir);
    }
    CardBuilder& verDat(const QByteArray& bytes)
    {
        return file(QStringLiteral("lang/ver.dat"), bytes);
    }

    QByteArray read(
        const QString& relative, const QString& settingDir = QStringLiteral("SETTING")) const;
    bool exists(
        const QString& relative, const QString& settingDir = QStringLiteral("SETTING")) const;

private:
    QTemporaryDir m_dir;
};

// Lines joined with CRLF, as the Kel camera writes them.
QByteArray crlfLines(const QStringList& lines);
