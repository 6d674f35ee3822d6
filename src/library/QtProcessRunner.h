#pragma once

#include "library/ProcessRunner.h"

// The real child-process runner over QProcess. Standard input is the null
// device, so a program that would ask a question (ffmpeg before overwriting a
// file it was not told to overwrite) reads end-of-file and goes on instead of
// waiting forever.
class QtProcessRunner final : public ProcessRunner {
public:
    QByteArray run(const QString& program, const QStringList& arguments) override;
};
