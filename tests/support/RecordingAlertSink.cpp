#include "RecordingAlertSink.h"

int RecordingAlertSink::memoryCardErrors() const
{
    int count = 0;
    for (const AlertRequest& request : m_requests) {
        if (request.titleKey == kMemoryCardErrorTitleKey
            && request.messageKey == kMemoryCardErrorMessageKey)
            ++count;
    }
    return count;
}

ScopedAlertRecorder::ScopedAlertRecorder()
    : m_sink(std::make_shared<RecordingAlertSink>())
{
    AlertSink::setShared(m_sink);
}

ScopedAlertRecorder::~ScopedAlertRecorder()
{
    AlertSink::setShared(nullptr);
}
