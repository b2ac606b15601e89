#pragma once

#include <QWidget>

class HelpBrowser;
class QHelpEngine;
class QTabWidget;
struct QHelpLink;

/// The window of the complete manual: contents and index at the left, the page at the right. Alt+Left and
/// Backspace go back to the page before, Alt+Right goes forward again.
class HelpEngine : public QWidget
{
    Q_OBJECT

public:
    /// For the manual in `collectionFile`, which is read only and opened when the window is shown for the
    /// first time. If there is no such file then, or no manual in it, everything stays empty.
    explicit HelpEngine(const QString &collectionFile, QWidget *parent = nullptr);
    ~HelpEngine() override;

private:
    void openManual();
    QTabWidget *createTabs();
    void connectLinks();
    void createShortcuts();

    /// Lets the user choose one of the pages that a word of the index leads to.
    void chooseDocument(const QList<QHelpLink> &documents);

    QHelpEngine *m_engine;  // child of this window
    HelpBrowser *m_browser; // likewise
};

/// Where the manual stands beside an executable in `applicationFolder`.
QString helpCollectionFile(const QString &applicationFolder);
