#ifndef VFILEUTILS_H
#define VFILEUTILS_H

#include "vocore_export.h"

#include <QString>

/**
 * @brief Small helpers for file paths.
 * @code
 * VFileUtils::folder("/home/me/report.csv");    // "/home/me"
 * VFileUtils::extension("/home/me/photo.JPG");  // "JPG"
 * @endcode
 */
class VOCORE_EXPORT VFileUtils
{
public:
    /// The path without its last component; empty for a bare file name.
    static QString folder(const QString& path);
    /// The text after the last dot of the file name (not of a folder); empty when there is none.
    static QString extension(const QString& path);
};

#endif // VFILEUTILS_H
