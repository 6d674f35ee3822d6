// Feeds arbitrary text to the camera's language announcement parser and the
// hexadecimal decoder, and looks every announced code up by name.
#include "config/CameraLanguages.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const CameraLanguageList languages = CameraLanguages::parseVerDat(bytes);
    for (const CameraLanguage& language : languages) {
        if (language.first < 0)
            std::abort();
        languageTitleByExpandingCode(language.second);
    }
    const QString text = QString::fromUtf8(bytes);
    const QByteArray decoded = dataFromHexString(text);
    if (decoded.size() != (text.toUtf8().size() + 1) / 2)
        std::abort();
    return 0;
}
