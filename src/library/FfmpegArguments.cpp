#include "library/FfmpegArguments.h"

#include "library/Utils.h"

namespace FfmpegArguments {

QStringList tagArguments(int aviType)
{
    switch (aviType) {
    case Utils::kAviTypeH264:
        return {};
    case Utils::kAviTypeHvc1:
        return { QStringLiteral("-vtag"), QStringLiteral("hvc1") };
    default:
        return { QStringLiteral("-vtag"), QStringLiteral("avc1") };
    }
}

QStringList dualStreamArguments(
    const QString& input, const QString& stream, bool withAudio, int aviType, const QString& output)
{
    QStringList arguments { QStringLiteral("-i"), input, QStringLiteral("-map"), stream };
    if (withAudio)
        arguments << QStringLiteral("-map") << QStringLiteral("0:2");
    arguments << QStringLiteral("-c") << QStringLiteral("copy") << QStringLiteral("-y")
              << QStringLiteral("-v") << QStringLiteral("10") << QStringLiteral("-vcodec")
              << QStringLiteral("copy") << QStringLiteral("-acodec") << QStringLiteral("copy");
    arguments << tagArguments(aviType) << output;
    return arguments;
}

QStringList singleStreamArguments(const QString& input, int aviType, const QString& output)
{
    switch (aviType) {
    case Utils::kAviTypeH264:
        return { QStringLiteral("-i"), input, QStringLiteral("-vcodec"), QStringLiteral("copy"),
            QStringLiteral("-acodec"), QStringLiteral("copy"), QStringLiteral("-y"), output };
    case Utils::kAviTypeHvc1:
        return { QStringLiteral("-i"), input, QStringLiteral("-vcodec"), QStringLiteral("copy"),
            QStringLiteral("-acodec"), QStringLiteral("copy"), QStringLiteral("-y"),
            QStringLiteral("-vtag"), QStringLiteral("hvc1"), output };
    default:
        return { QStringLiteral("-v"), QStringLiteral("10"), QStringLiteral("-i"), input,
            QStringLiteral("-vcodec"), QStringLiteral("copy"), QStringLiteral("-acodec"),
            QStringLiteral("copy"), QStringLiteral("-vtag"), QStringLiteral("avc1"),
            QStringLiteral("-y"), output };
    }
}

QStringList subtitleArguments(const QString& input, const QString& srtOutput)
{
    return { QStringLiteral("-i"), input, QStringLiteral("-vn"), QStringLiteral("-an"),
        QStringLiteral("-c:s"), QStringLiteral("text"), srtOutput };
}

} // namespace FfmpegArguments
