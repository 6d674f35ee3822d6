#pragma once

#include "cli/CliCommands.h"

#include "config/AlertSink.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

class TolmSettingManager;

// Helpers shared by the card, config, kel and languages commands.
namespace CardCli {

// JSON text of a string ("..." with escapes), or null for a null string.
QString jsonString(const QString& text);
// JSON text of a string that is never null ("" for a null string).
QString jsonText(const QString& text);

// The record as `tavro config show` prints it: model type, field count,
// record size and the model's fields in record order.
QString recordJson(const TolmSettingManager& manager);

// Collects the alerts the engine raises while a command runs; the command
// then prints them and exits with kFailure.
class RecordingCliAlertSink final : public AlertSink {
public:
    int showAlert(const AlertRequest& request) override;
    bool isEmpty() const { return m_requests.isEmpty(); }
    // Prints each alert's message to `err`; returns kFailure when there was one.
    int report(QTextStream& err) const;

private:
    QList<AlertRequest> m_requests;
};

// Installs a recording sink as the shared alert sink for one command.
std::shared_ptr<RecordingCliAlertSink> installAlertSink();

// True when DIR is an existing folder; otherwise prints why to `err`.
bool checkCardFolder(const QString& dir, QTextStream& err);

// --model-type, --local-id and --firmware: what the user says about the
// camera, taking the place of what the card's identification found.
struct CardOverrides {
    std::optional<qint64> modelType;
    std::optional<qint64> localID;
    std::optional<qint32> firmware;

    static bool isOption(const QString& name);
    // Takes one option's value (a decimal or 0x number in 32-bit range);
    // returns the problem, or "" when it was taken.
    QString parse(const QString& name, const QString& value);
};

// A fresh shared settings model for the card in `dir`, identified as
// `card identify` does and then overridden.
TolmSettingManager& identifyCard(const QString& dir, const CardOverrides& overrides);

// Prints "tavro <synopsis>" as a usage error and returns kUsage.
int usage(CliIo& io, const QString& synopsis, const QString& problem = {});

} // namespace CardCli
