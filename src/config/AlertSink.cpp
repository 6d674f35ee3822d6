#include "config/AlertSink.h"

#include "config/ConfigLog.h"

namespace {

class LoggingAlertSink final : public AlertSink {
public:
    int showAlert(const AlertRequest& request) override
    {
        qCInfo(lcConfig) << "alert" << request.titleKey << request.messageKey;
        return kFirstButtonReturn;
    }
};

std::shared_ptr<AlertSink>& sharedSink()
{
    static std::shared_ptr<AlertSink> sink = std::make_shared<LoggingAlertSink>();
    return sink;
}

} // namespace

AlertRequest AlertRequest::memoryCardError()
{
    AlertRequest request;
    request.titleKey = AlertSink::kMemoryCardErrorTitleKey;
    request.messageKey = AlertSink::kMemoryCardErrorMessageKey;
    return request;
}

AlertSink& AlertSink::shared()
{
    return *sharedSink();
}

void AlertSink::setShared(std::shared_ptr<AlertSink> sink)
{
    sharedSink() = sink ? std::move(sink) : std::make_shared<LoggingAlertSink>();
}
