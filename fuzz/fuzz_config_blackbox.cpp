// Feeds arbitrary bytes to the Kel camera's line file model: split into
// lines, edit a key, move the clock lines, and join again.
#include "config/KelSettingManager.h"

#include <QDateTime>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    KelSettingManager kel;
    kel.setLinedSettings(KelSettingManager::linesFromText(bytes));
    // Lines survive a join and a second split unchanged.
    const QByteArray joined = KelSettingManager::textFromLines(kel.linedSettings());
    if (KelSettingManager::linesFromText(joined) != kel.linedSettings())
        std::abort();
    const qsizetype before = kel.linedSettings().size();
    kel.setValueForKey(QStringLiteral("voice_out="), QStringLiteral("0"));
    kel.valueForKey(QStringLiteral("model="));
    kel.removeTimeDateDelimiters();
    kel.addTimeDateDelimiters(
        KelSettingManager::clockLines(QDateTime(QDate(2016, 3, 7), QTime(14, 5, 9))));
    if (kel.linedSettings().size() > before + 6)
        std::abort();
    return 0;
}
