#pragma once

#include "config/AlertSink.h"

#include <QList>

#include <memory>

// Records every alert the engine raises and answers with a chosen code.
class RecordingAlertSink final : public AlertSink {
public:
    explicit RecordingAlertSink(int answer = kFirstButtonReturn)
        : m_answer(answer)
    {
    }

    int showAlert(const AlertRequest& request) override
    {
        m_requests.append(request);
        return m_answer;
    }

    const QList<AlertRequest>& requests() const { return m_requests; }
    int memoryCardErrors() const;

private:
    int m_answer;
    QList<AlertRequest> m_requests;
};

// Installs a fresh recording sink as the shared sink for one test's lifetime
// and restores the default afterwards.
class ScopedAlertRecorder {
public:
    ScopedAlertRecorder();
    ~ScopedAlertRecorder();
    RecordingAlertSink& sink() { return *m_sink; }

private:
    std::shared_ptr<RecordingAlertSink> m_sink;
};
