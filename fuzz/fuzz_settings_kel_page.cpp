// Feeds arbitrary bytes as the Kel camera's blackbox.cfg to its settings page:
// the page shows every control within its range (or with no selection), the
// graph within 0-100 %, and no change of a control adds or removes a line.
#include "config/KelSettingManager.h"
#include "settings/kel/KelSettingViewController.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void checkShown(const KelSettingViewController& page)
{
    for (const SettingControl& c : page.controls()) {
        const bool none = c.value == -1
            && (c.kind == SettingControlKind::RadioGroup || c.kind == SettingControlKind::ComboBox);
        if (!none && (c.value < c.minimum || c.value > c.maximum))
            std::abort();
    }
    for (const PartitionBar& bar : page.partitionGraph()) {
        if (bar.percent < 0 || bar.percent > 100)
            std::abort();
    }
}

} // namespace

// Each run frees thousands of small blocks along ever new call paths. With the
// sanitizer's defaults (256 MB quarantine, 30-frame stacks kept for every block) the
// allocator's size classes and its stack store grow past 2 GB within the hour while
// the live heap stays near 25 MB. A 16 MB quarantine and 2-frame allocation stacks
// keep the run's memory flat; a crash still prints its full stack. ASAN_OPTIONS
// from the environment overrides this.
extern "C" const char* __asan_default_options()
{
    return "quarantine_size_mb=16:malloc_context_size=2";
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    KelSettingManager kel;
    kel.setLinedSettings(KelSettingManager::linesFromText(bytes));
    const qsizetype lines = kel.linedSettings().size();
    KelSettingViewController page(
        6, &kel, [] { return QDateTime(QDate(2016, 3, 7), QTime(1, 2, 3)); });
    page.applySettingData();
    checkShown(page);
    const QList<SettingControl> controls = page.controls();
    for (const SettingControl& c : controls) {
        for (int value = c.minimum; value <= c.maximum; ++value)
            page.userChange(c.name, value);
    }
    if (kel.linedSettings().size() != lines)
        std::abort();
    page.applySettingData();
    checkShown(page);
    return 0;
}
