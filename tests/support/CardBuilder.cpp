#include "CardBuilder.h"

#include "TestFiles.h"

#include <QFileInfo>
#include <QStringList>

CardBuilder::CardBuilder() = default;

QString CardBuilder::path(const QString& relative, const QString& settingDir) const
{
    return root() + u'/' + settingDir + u'/' + relative;
}

CardBuilder& CardBuilder::file(
    const QString& relative, const QByteArray& bytes, const QString& settingDir)
{
    TestFiles::write(path(relative, settingDir), bytes);
    return *this;
}

QByteArray CardBuilder::read(const QString& relative, const QString& settingDir) const
{
    return TestFiles::read(path(relative, settingDir));
}

bool CardBuilder::exists(const QString& relative, const QString& settingDir) const
{
    return QFileInfo::exists(path(relative, settingDir));
}

QByteArray crlfLines(const QStringList& lines)
{
    return lines.join(QStringLiteral("\r\n")).toUtf8();
}
