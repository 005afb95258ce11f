#include "vloggerwidget.h"

#include "logwidgetappender.h"

#include <logger.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextEdit>
#include <QToolBar>
#include <QVBoxLayout>

VLoggerWidget::VLoggerWidget(QWidget* parent, bool attach)
    : QWidget(parent)
    , m_toolBar(new QToolBar(this))
    , m_levelBox(new QComboBox(this))
    , m_textEdit(new QTextEdit(this))
{
    setObjectName(QStringLiteral("LoggerWidget"));

    if (attach) {
        m_appender = new LogWidgetAppender(this);
        m_appender->setDetailsLevel(Logger::Trace);
        // Default connection: lines logged on other threads are queued to this (GUI) thread.
        connect(m_appender, &LogWidgetAppender::logMessage, this, &VLoggerWidget::loggerFunction);
        if (Logger* logger = cuteLoggerInstance())
            logger->registerAppender(m_appender);
    }

    QFont font(QStringLiteral("Monospace"));
    font.setStyleHint(QFont::TypeWriter, QFont::PreferDefault);
    m_textEdit->setFont(font);
    m_textEdit->setReadOnly(true);
    m_textEdit->setUndoRedoEnabled(false);
    m_textEdit->setLineWrapMode(QTextEdit::NoWrap);

    m_levelBox->addItems({ tr("Trace"), tr("Debug"), tr("Info"), tr("Warning") });
    connect(m_levelBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &VLoggerWidget::traceLevelChanged);

    m_toolBar->setMaximumHeight(20);
    // Only 20 pixels high: small icons, no margins and a box no taller than the bar, so nothing is cut.
    m_toolBar->setIconSize(QSize(16, 16));
    m_toolBar->layout()->setContentsMargins(0, 0, 0, 0);
    m_levelBox->setMaximumHeight(20);
    m_levelAction = m_toolBar->addWidget(m_levelBox);
    QAction* clear = m_toolBar->addAction(QIcon(QStringLiteral(":/images/clear")), tr("Clear"));
    connect(clear, &QAction::triggered, m_textEdit, &QTextEdit::clear);
    QAction* copy
        = m_toolBar->addAction(QIcon(QStringLiteral(":/images/copyclipboard")), tr("Copy to Clipboard"));
    connect(copy, &QAction::triggered, this, &VLoggerWidget::copyAllToClipBoard);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_toolBar);
    layout->addWidget(m_textEdit);
}

VLoggerWidget::~VLoggerWidget()
{
    if (m_appender) {
        // Waits until no thread is inside the appender, so none can reach this widget any more;
        // lines already queued to it are discarded with it.
        if (Logger* logger = cuteLoggerInstance())
            logger->removeAppender(m_appender);
        delete m_appender;
        m_appender = nullptr;
    }
}

void VLoggerWidget::setLoggerLevel(int level)
{
    if (level < 0 || level >= m_levelBox->count()) {
        LOG_WARNING("Logger level %d has no entry in the level box.", level);
        return;
    }
    m_levelBox->setCurrentIndex(level);
}

int VLoggerWidget::loggerLevel() const
{
    return m_levelBox->currentIndex();
}

void VLoggerWidget::showLogLevelComboBox(bool visible)
{
    m_levelAction->setVisible(visible);
}

int VLoggerWidget::maximumLineCount() const
{
    return m_maximumLineCount;
}

void VLoggerWidget::setMaximumLineCount(int count)
{
    count = qMax(0, count);
    if (count == m_maximumLineCount)
        return;
    m_maximumLineCount = count;
    trimHistory(0);
    emit maximumLineCountChanged(count);
}

void VLoggerWidget::trimHistory(int slack)
{
    QTextDocument* document = m_textEdit->document();
    const int excess = document->blockCount() - m_maximumLineCount;
    if (m_maximumLineCount == 0 || excess <= slack)
        return;
    QTextCursor cursor(document);
    cursor.movePosition(QTextCursor::Start);
    cursor.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor, excess);
    cursor.removeSelectedText();
}

void VLoggerWidget::loggerFunction(const QString& line, int level)
{
    if (level < m_levelBox->currentIndex())
        return;
    // Inserted as plain text: a message such as "a<b>c" must not turn into markup.
    QScrollBar* bar = m_textEdit->verticalScrollBar();
    const bool atBottom = bar->value() == bar->maximum();
    QTextDocument* document = m_textEdit->document();
    QTextCursor cursor(document);
    cursor.movePosition(QTextCursor::End);
    if (!document->isEmpty())
        cursor.insertBlock();
    cursor.insertText(line);
    // Dropping the oldest lines makes the document lay out every remaining line again, so it is
    // done once per tenth of the history (QTextDocument's own block limit would do it per line).
    trimHistory(m_maximumLineCount / 10);
    if (atBottom)
        bar->setValue(bar->maximum());
}

void VLoggerWidget::copyAllToClipBoard()
{
    QClipboard* clipboard = QApplication::clipboard();
    clipboard->clear();
    clipboard->setText(m_textEdit->toPlainText());
}
