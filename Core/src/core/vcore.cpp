#include "vcore.h"

namespace VCore {

QDate nullDate()
{
    return QDate(1753, 1, 1);
}

QList<int> stringsToInts(const QStringList& list)
{
    QList<int> result;
    result.reserve(list.size());
    for (const QString& s : list)
        result.append(s.trimmed().toInt());
    return result;
}

void registerMetaTypes()
{
    qRegisterMetaType<VCore::EditTypes>("VCore::EditTypes");
}

} // namespace VCore

namespace {
// Signals carrying VCore::EditTypes must work across queued connections from the start.
const int s_registered = (VCore::registerMetaTypes(), 0);
} // namespace
