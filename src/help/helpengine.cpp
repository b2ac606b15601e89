#include "help/helpengine.h"

#include "base/gui/firstshow.h"
#include "help/helpbrowser.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QHelpContentWidget>
#include <QHelpEngine>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QMenu>
#include <QShortcut>
#include <QSplitter>
#include <QTabWidget>
#include <QThread>
#include <QUrl>

namespace {

constexpr QSize kWindowSize(1000, 700);
constexpr int kTabsWidth = 200; // at most

constexpr char kFirstPage[] = "qthelp://zrt.vxconfig/doc/index.html";

template <typename W>
W *named(const char *name, const QString &accessibleName, W *widget)
{
    widget->setObjectName(QLatin1String(name));
    widget->setAccessibleName(accessibleName);
    return widget;
}

QHelpEngine *createEngine(const QString &collectionFile, QObject *parent)
{
    auto *engine = new QHelpEngine(collectionFile, parent);
    // An engine writes to its collection unless this property, which has no setter, keeps it from that. The
    // folder of the program may be read only, and two programs may read the same collection.
    engine->setProperty("_q_readonly", true);
    return engine;
}

} // namespace

HelpEngine::HelpEngine(const QString &collectionFile, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_engine(createEngine(collectionFile, this))
    , m_browser(named("helpBrowser", tr("Page"), new HelpBrowser(*m_engine)))
{
    setWindowTitle(tr("Torvex Configurator Manual"));
    resize(kWindowSize);
    auto *splitter = new QSplitter(Qt::Horizontal);
    splitter->setObjectName(QStringLiteral("helpSplitter"));
    splitter->insertWidget(0, createTabs());
    splitter->insertWidget(1, m_browser);
    splitter->setChildrenCollapsible(false);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
    connectLinks();
    createShortcuts();
    beforeFirstShow(*this, [this] { openManual(); }); // it takes long, and the program makes it at its start
}

HelpEngine::~HelpEngine()
{
    // Contents and index are read by threads of the engine. It deletes what they read from before it waits
    // for them, so this has to wait. They take milliseconds, unless another program has locked the collection
    // for writing, which none of ours does: then they wait for it as long as the engine's database lets them.
    const auto threads = m_engine->contentModel()->QObject::parent()->findChildren<QThread *>();
    for (QThread *thread : threads)
        thread->wait();
}

void HelpEngine::openManual()
{
    if (QFileInfo(m_engine->collectionFile()).isFile()) // it would be created
        m_engine->setupData();                          // without success everything stays empty
    m_browser->setSource(QUrl(QLatin1String(kFirstPage)));
}

QTabWidget *HelpEngine::createTabs()
{
    auto *tabs = named("helpTabs", tr("Contents and index"), new QTabWidget);
    tabs->setMaximumWidth(kTabsWidth);
    tabs->addTab(named("contentsView", tr("Contents"), m_engine->contentWidget()), tr("Contents"));
    tabs->addTab(named("indexView", tr("Index"), m_engine->indexWidget()), tr("Index"));
    return tabs;
}

void HelpEngine::connectLinks()
{
    const auto setSource = qOverload<const QUrl &>(&HelpBrowser::setSource);
    connect(m_engine->contentWidget(), &QHelpContentWidget::linkActivated, m_browser, setSource);
    // A word of the index that leads to one page, and a word that leads to several.
    connect(m_engine->indexWidget(), &QHelpIndexWidget::documentActivated, m_browser,
            [this](const QHelpLink &document) { m_browser->setSource(document.url); });
    connect(m_engine->indexWidget(), &QHelpIndexWidget::documentsActivated, this,
            &HelpEngine::chooseDocument);
    connect(m_engine->contentModel(), &QHelpContentModel::contentsCreated, m_engine->contentWidget(),
            [this] { m_engine->contentWidget()->expandToDepth(0); });
}

void HelpEngine::createShortcuts()
{
    // For the whole window; the browser itself knows them only while it has the focus.
    for (const int keys : {int(Qt::ALT) + int(Qt::Key_Left), int(Qt::Key_Backspace)})
        connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, m_browser,
                &HelpBrowser::backward);
    connect(new QShortcut(QKeySequence(int(Qt::ALT) + int(Qt::Key_Right)), this), &QShortcut::activated,
            m_browser, &HelpBrowser::forward);
}

void HelpEngine::chooseDocument(const QList<QHelpLink> &documents)
{
    QHelpIndexWidget *index = m_engine->indexWidget();
    auto *menu = named("documentMenu", tr("Pages"), new QMenu(this));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const QHelpLink &document : documents)
        menu->addAction(document.title, m_browser, [this, document] { m_browser->setSource(document.url); });
    menu->setActiveAction(menu->actions().constFirst());
    menu->popup(index->viewport()->mapToGlobal(index->visualRect(index->currentIndex()).bottomLeft()));
}

QString helpCollectionFile(const QString &applicationFolder)
{
    return applicationFolder + QStringLiteral("/documentation/vxconfighelp.qhc");
}
