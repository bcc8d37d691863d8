#pragma once
// What came with the program and isn't the user's: the help, the release notes, the configuration to begin with.

#include <QString>

/// Where a file or folder lies that came with the program: beside it, or where a package puts such things
/// (../share/burnline). Where it would lie beside the program when it is nowhere.
QString FindShipped(const QString& name);
