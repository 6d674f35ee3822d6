#include "library/ClipNaming.h"

#include "library/ClipFolders.h"

#include <QFileInfo>

#include <array>
#include <utility>

namespace ClipNaming {

QString absoluteUrlString(const QUrl& url)
{
    return url.toString(QUrl::FullyEncoded);
}

QString lowerExtension(const QString& path)
{
    return QFileInfo(path).suffix().toLower();
}

QString lowerExtension(const QUrl& url)
{
    return lowerExtension(url.path());
}

QString partnerString(const QUrl& url)
{
    QString text = absoluteUrlString(url);
    if (text.contains(QLatin1String("F.")))
        return text.replace(QLatin1String("F."), QLatin1String("R."));
    if (text.contains(QLatin1String("R.")))
        return text.replace(QLatin1String("R."), QLatin1String("F."));
    return {};
}

QString conversionPartnerString(const QUrl& url)
{
    static constexpr std::array<std::pair<const char*, const char*>, 4> kPairs { {
        { "F.", "R." },
        { "R.", "F." },
        { "F_BC.", "R_BC." },
        { "R_BC.", "F_BC." },
    } };
    QString text = absoluteUrlString(url);
    for (const auto& [from, to] : kPairs) {
        if (text.contains(QLatin1String(from)))
            return text.replace(QLatin1String(from), QLatin1String(to));
    }
    return {};
}

bool isMp4Partner(const QUrl& clip, const QUrl& partner)
{
    return lowerExtension(clip) == QLatin1String("mp4")
        && lowerExtension(partner) == QLatin1String("mp4")
        && partnerString(clip) == absoluteUrlString(partner);
}

QString recordingType(const QString& path)
{
    for (int index = 1; index < ClipFolders::kFilterCount; ++index) {
        const QLatin1StringView key = ClipFolders::filterKey(index);
        if (path.contains(key))
            return key;
    }
    return {};
}

bool isKelFamilyClip(const QUrl& url)
{
    const QString name = url.fileName();
    if (!name.endsWith(QLatin1String(".avi")))
        return false;
    for (const char* prefix : { "Rec_", "Event_", "Park_", "Manual_" }) {
        if (name.startsWith(QLatin1String(prefix)))
            return true;
    }
    return false;
}

} // namespace ClipNaming
