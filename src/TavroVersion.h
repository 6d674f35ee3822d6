#pragma once

#include <QString>

namespace Tavro {
// The viewer's own version, shown as "Ver %@" and by `tavro --version`.
QString versionString();
}
