#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// The shared libraries an ELF file names in its dynamic section (DT_NEEDED),
// in order; empty for anything that is not a readable ELF file.
QStringList lmNeededLibraries(const QByteArray &elf);

// The Qt major version a module is linked against (from its libQt5* or libQt6*
// needs), read from the file without loading it; 0 when it names no Qt or
// cannot be read. A module built against another Qt than the host's would
// crash the host once loaded.
int lmModuleQtMajor(const QString &path);
