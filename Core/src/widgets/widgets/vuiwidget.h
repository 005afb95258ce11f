#ifndef VUIWIDGET_H
#define VUIWIDGET_H

#include "veitikgip_export.h"

#include <QUrl>
#include <QWidget>

/**
 * @brief The base of screen-level widgets: a QWidget that reports links and
 * the progress of long operations.
 *
 * Subclasses emit progressStart() with a message and the expected amount of
 * work, progressUpdate() with the amount done, and progressFinished() with a
 * closing message, so that a main window can drive one progress bar for
 * every screen; linkClicked() passes on a link the user followed. The
 * widget has no user property: it is a container, not a form field.
 * @code
 * connect(screen, &VUiWidget::progressUpdate, progressBar, [=](qlonglong done) { ... });
 * @endcode
 */
class VEITIKGIP_EXPORT VUiWidget : public QWidget {
    Q_OBJECT
public:
    /// Sets the object name to @p objectName unless it is empty.
    explicit VUiWidget(QWidget* parent = nullptr, const QString& objectName = QString());

signals:
    void linkClicked(const QUrl& url);
    void progressStart(const QString& msg, qlonglong sz);
    void progressUpdate(qlonglong cnt);
    void progressFinished(const QString& msg);
};

#endif // VUIWIDGET_H
