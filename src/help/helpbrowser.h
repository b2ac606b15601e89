#pragma once

#include <QTextBrowser>

class QHelpEngine;

/// The text pane of the manual. It shows pages of the collection and nothing else; links to the web and mail
/// addresses open in the programs that the system has for them.
class HelpBrowser : public QTextBrowser
{
    Q_OBJECT

public:
    /// `engine` must live as long as pages are shown.
    explicit HelpBrowser(QHelpEngine &engine, QWidget *parent = nullptr);

    /// What the collection holds under an address of the scheme "qthelp", empty if it holds nothing. Other
    /// addresses are loaded as any text browser does.
    QVariant loadResource(int type, const QUrl &name) override;

    using QTextBrowser::setSource;

public slots:
    /// Shows a page, or hands an address of the web or of a person to the system. A page that the collection
    /// does not hold, and an address of any other scheme, leave what is shown.
    void setSource(const QUrl &name) override;

private:
    QByteArray manualData(const QUrl &name) const;

    QHelpEngine *const m_engine;
};
