#pragma once

#include <QObject>
#include <QThread>

#include <functional>
#include <memory>

// Runs `work` on a thread of its own at the lowest priority and hands its
// result to `done` on the thread of `context`. Once `context` is destroyed
// the result is dropped; the thread still ends and cleans up after itself.
template <typename Result>
void runInBackground(
    QObject* context, std::function<Result()> work, std::function<void(const Result&)> done)
{
    auto result = std::make_shared<Result>();
    QThread* thread = QThread::create([result, work = std::move(work)] { *result = work(); });
    QObject::connect(
        thread, &QThread::finished, context, [result, done = std::move(done)] { done(*result); });
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start(QThread::LowestPriority);
}
