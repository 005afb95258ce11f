#ifndef VHEADERSTATE_P_H
#define VHEADERSTATE_P_H

#include <QByteArray>
#include <Qt>

namespace VHeaderState {

/**
 * Whether @p state, as written by QHeaderView::saveState() of Qt 5, is
 * complete and consistent for a header of @p orientation with
 * @p sectionCount sections. QHeaderView::restoreState() trusts its input and
 * can crash, hang or leave the header short of sections on damaged bytes, so
 * saved states are checked here before Qt sees them.
 */
bool isUsable(const QByteArray& state, Qt::Orientation orientation, int sectionCount);

} // namespace VHeaderState

#endif // VHEADERSTATE_P_H
