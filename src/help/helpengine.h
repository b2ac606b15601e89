#pragma once

#include <QWidget>

class QHelpEngine;

/// The window of the complete manual: contents and index at the left, the page at the right.
class HelpEngine : public QWidget
{
    Q_OBJECT

public:
    /// Shows the manual in `collectionFile`. If there is no such file, everything stays empty.
    explicit HelpEngine(const QString &collectionFile, QWidget *parent = nullptr);
    ~HelpEngine() override;

private:
    QHelpEngine *m_engine = nullptr; // child of this window
};

/// Where the manual stands beside an executable in `applicationFolder`.
QString helpCollectionFile(const QString &applicationFolder);
