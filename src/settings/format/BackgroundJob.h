#pragma once

#include <QObject>
#include <QPointer>
#include <QThread>

#include <functional>
#include <memory>

// Runs `work` on a thread of its own at the lowest priority and hands its
// result to `done` on the calling thread, which must be the thread of `context`.
// Once `context` is destroyed the result is dropped; the thread still ends and
// cleans up after itself.
template <typename Result>
void runInBackground(
    QObject* context, std::function<Result()> work, std::function<void(const Result&)> done)
{
    Q_ASSERT(context->thread() == QThread::currentThread());
    auto result = std::make_shared<Result>();
    QThread* thread = QThread::create([result, work = std::move(work)] { *result = work(); });
    // The answer travels through the thread object itself, which lives on this
    // thread. Closing `context` early then never edits the connections of the
    // `finished` signal while the worker is emitting it.
    QObject::connect(thread, &QThread::finished, thread,
        [thread, result, guard = QPointer<QObject>(context), done = std::move(done)] {
            if (guard)
                done(*result);
            thread->deleteLater();
        });
    thread->start(QThread::LowestPriority);
}
