#include "vfileutils.h"

namespace {
int lastSeparator(const QString& path)
{
    // Windows paths come through settings and drops too, so accept both separators.
    return qMax(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\')));
}
} // namespace

QString VFileUtils::folder(const QString& path)
{
    const int sep = lastSeparator(path);
    if (sep < 0)
        return QString();
    if (sep == 0)
        return path.left(1);
    return path.left(sep);
}

QString VFileUtils::extension(const QString& path)
{
    const int sep = lastSeparator(path);
    const int dot = path.lastIndexOf(QLatin1Char('.'));
    // A leading dot names a hidden file, not an extension.
    if (dot <= sep + 1)
        return QString();
    return path.mid(dot + 1);
}
