#ifndef VTOOLBARMENU_P_H
#define VTOOLBARMENU_P_H

class QMenu;
class VCrudToolBar;

namespace VToolBarMenu {

/**
 * Adds the entries of @p toolBar to a view's context menu, in the toolbar's
 * order: separators as they are, the menu of a tool button that has one as a
 * sub-menu titled after its action, and the action of a clickable label,
 * relabelled with the label's tool tip and rewired to click the label. Other
 * widgets add nothing; a null @p toolBar adds nothing.
 */
void addToolBarEntries(QMenu* menu, const VCrudToolBar* toolBar);

} // namespace VToolBarMenu

#endif // VTOOLBARMENU_P_H
