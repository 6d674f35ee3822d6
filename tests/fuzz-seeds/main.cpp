// make-fuzz-seeds FOLDER: writes the fuzz targets' seed corpora into
// FOLDER/<target>/ (the repository keeps them in fuzz/corpus/).
#include "FuzzSeeds.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTextStream>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QTextStream err(stderr);
    const QStringList args = app.arguments();
    if (args.size() != 2) {
        err << "usage: make-fuzz-seeds FOLDER\n";
        return 2;
    }
    QTemporaryDir scratch;
    const int written = FuzzSeeds::writeSeeds(FuzzSeeds::allSeeds(scratch.path()), args[1]);
    if (written < 0) {
        err << "make-fuzz-seeds: cannot write under " << args[1] << '\n';
        return 1;
    }
    QTextStream(stdout) << written << " seeds written under " << args[1] << '\n';
    return 0;
}
