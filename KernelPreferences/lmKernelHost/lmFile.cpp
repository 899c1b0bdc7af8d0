#include "lmFile.h"

#include <QFileInfo>
#include <QString>

#include <algorithm>

bool lmFile::exists(const std::string &path)
{
    return !path.empty() && QFileInfo::exists(QString::fromStdString(path));
}

std::string lmFile::convertSeparators(const std::string &path)
{
    std::string converted = path;
    std::replace(converted.begin(), converted.end(), '\\', '/');
    return converted;
}
