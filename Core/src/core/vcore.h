#ifndef VCORE_H
#define VCORE_H

#include "vocore_export.h"

#include <QDate>
#include <QList>
#include <QMetaType>
#include <QObject>
#include <QStringList>

/**
 * @brief Shared types and small helpers of the core library.
 *
 * `VCore::EditTypes` says how a record form was opened; it travels by value
 * through queued and direct signals, so it is a registered meta-type.
 */
namespace VCore {
Q_NAMESPACE_EXPORT(VOCORE_EXPORT)

/// The ways a record form is opened. Viewing read-only is not an edit type.
enum EditTypes {
    EditRecord = 0, ///< edit an existing record
    NewRecord = 1, ///< create a new record
    CopyRecord = 2 ///< create a record as a copy of another
};
Q_ENUM_NS(EditTypes)

/**
 * The date that stands for "no date" in the date editors and dialogs:
 * a fixed, valid sentinel (1 January 1753), never a real business date.
 */
VOCORE_EXPORT QDate nullDate();

/// Converts each string to an integer, in order; a string that is not a number gives 0.
VOCORE_EXPORT QList<int> stringsToInts(const QStringList& list);

/// Registers the core library's meta-types; done automatically when the library loads.
VOCORE_EXPORT void registerMetaTypes();
} // namespace VCore

Q_DECLARE_METATYPE(VCore::EditTypes)

#endif // VCORE_H
