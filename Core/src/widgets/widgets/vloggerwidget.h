#ifndef VLOGGERWIDGET_H
#define VLOGGERWIDGET_H

#include "veitikgip_export.h"

#include <QWidget>

class LogWidgetAppender;
class QAction;
class QComboBox;
class QTextEdit;
class QToolBar;

/**
 * @brief A log viewer: a level selector, "Clear" and "Copy to Clipboard"
 * above a read-only, monospaced list of log lines.
 *
 * Made with @p attach true, the widget registers its own LogWidgetAppender
 * with the process-wide logger and shows every message logged anywhere in
 * the process, from any thread, at or above the selected level; errors and
 * fatal messages are always shown. It detaches itself when destroyed. Made
 * with @p attach false, it shows only the lines passed to loggerFunction().
 *
 * The view keeps the last maximumLineCount() lines (10000 by default) and
 * drops older ones, a tenth of that count at a time, so a long-running
 * application does not grow without bound.
 * @code
 * auto* log = new VLoggerWidget(dock, true);
 * log->setLoggerLevel(Logger::Info);
 * dock->setWidget(log);
 * @endcode
 */
class VEITIKGIP_EXPORT VLoggerWidget : public QWidget {
    Q_OBJECT
    Q_PROPERTY(int loggerLevel READ loggerLevel WRITE setLoggerLevel NOTIFY traceLevelChanged)
    Q_PROPERTY(
        int maximumLineCount READ maximumLineCount WRITE setMaximumLineCount NOTIFY maximumLineCountChanged)
public:
    explicit VLoggerWidget(QWidget* parent = nullptr, bool attach = false);
    ~VLoggerWidget() override;

    /// Selects item @p level of the level box (0 Trace to 3 Warning); other values are refused.
    void setLoggerLevel(int level);
    /// The lowest level shown: the level box's current index.
    int loggerLevel() const;

    /// Shows or hides the level box in the toolbar.
    void showLogLevelComboBox(bool visible);

    /**
     * Lines kept: once the log holds a tenth more than @p count lines, the
     * oldest are dropped down to @p count. 0 keeps everything.
     */
    int maximumLineCount() const;
    void setMaximumLineCount(int count);

    /// True when the widget receives the process-wide log through its own appender.
    bool isAttached() const { return m_appender != nullptr; }

public slots:
    /// Appends @p line when @p level is at least loggerLevel(); drops it otherwise.
    void loggerFunction(const QString& line, int level);

signals:
    /// The level box selected another level (by the user or through setLoggerLevel()).
    void traceLevelChanged(int level);
    void maximumLineCountChanged(int count);

protected slots:
    /// Replaces the clipboard's contents with the whole log text.
    void copyAllToClipBoard();

private:
    void trimHistory(int slack);

    QToolBar* m_toolBar;
    QComboBox* m_levelBox;
    QTextEdit* m_textEdit;
    LogWidgetAppender* m_appender = nullptr;
    QAction* m_levelAction;
    int m_maximumLineCount = 10000;
};

#endif // VLOGGERWIDGET_H
