#include <QDir>
#include <QFile>
#include <QHelpContentModel>
#include <QHelpContentWidget>
#include <QHelpEngine>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QImage>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <QtTest>
#include <memory>

namespace {

const QString kSources = QStringLiteral(VX_MANUAL_SOURCES);
const QString kFolder = QStringLiteral("qthelp://zrt.vxconfig/doc/");

QByteArray contentsOf(const QString &name)
{
    QFile file(kSources + QLatin1Char('/') + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// What the first group of the pattern found at all its places.
QStringList captured(const QString &text, const char *pattern)
{
    QStringList found;
    auto matches = QRegularExpression(QString::fromLatin1(pattern)).globalMatch(text);
    while (matches.hasNext())
        found.append(matches.next().captured(1));
    return found;
}

QStringList anchorsOf(const QString &page)
{
    return captured(QString::fromUtf8(contentsOf(page)), "<[^>]*\\s(?:name|id)=\"([^\"]*)\"");
}

bool isOfTheWeb(const QString &link)
{
    return link.startsWith(QStringLiteral("http:")) || link.startsWith(QStringLiteral("https:"));
}

/// Addresses of all chapters below the item.
QStringList chapters(const QHelpContentModel &model, const QModelIndex &parent = QModelIndex())
{
    QStringList found;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex item = model.index(row, 0, parent);
        found.append(model.contentItemAt(item)->url().toString());
        found.append(chapters(model, item));
    }
    return found;
}

} // namespace

/// The manual that the program is built with: nothing in it leads nowhere.
class TstManual : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyFileIsNamedInTheProject();
    void everyFileOfTheProjectIsInTheCollection();
    void pagesAreWellFormed_data();
    void pagesAreWellFormed();
    void pagesLeadSomewhere_data();
    void pagesLeadSomewhere();
    void picturesCanBeShown();
    void everyPageIsInTheContents();
    void chaptersLeadToTheirPlaces();
    void wordsOfTheIndexLeadToTheirPlaces();

private:
    void addPages() const;
    /// Empty, or what is wrong with a link to "page.html#place" that stands in `page`.
    QString fault(const QString &page, const QString &link) const;
    QByteArray data(const QString &name) const { return m_engine->fileData(QUrl(kFolder + name)); }

    std::unique_ptr<QHelpEngine> m_engine;
    QStringList m_pages;    // of the folder
    QStringList m_files;    // all of the folder that belong to the manual
    QStringList m_named;    // in the project
    QStringList m_keywords; // likewise
};

void TstManual::initTestCase()
{
    const QDir folder(kSources);
    m_pages = folder.entryList({"*.html"}, QDir::Files);
    QVERIFY(m_pages.contains("index.html"));
    m_files = m_pages + folder.entryList({"*.css"}, QDir::Files);
    for (const QString &picture : QDir(kSources + "/images").entryList({"*.png"}, QDir::Files))
        m_files.append("images/" + picture);
    m_files.sort();

    QXmlStreamReader project(contentsOf("vxconfighelp.qhp"));
    while (!project.atEnd()) {
        if (project.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (project.name() == QLatin1String("keyword"))
            m_keywords.append(project.attributes().value("name").toString());
        else if (project.name() == QLatin1String("file"))
            m_named.append(project.readElementText());
    }
    QVERIFY2(!project.hasError(), qPrintable(project.errorString()));

    m_engine = std::make_unique<QHelpEngine>(QStringLiteral(VX_MANUAL_COLLECTION));
    m_engine->setProperty("_q_readonly", true);
    QVERIFY(QFile::exists(VX_MANUAL_COLLECTION));
    QSignalSpy contents(m_engine->contentModel(), &QHelpContentModel::contentsCreated);
    QVERIFY2(m_engine->setupData(), qPrintable(m_engine->error()));
    QVERIFY(contents.wait());
    QCOMPARE(m_engine->registeredDocumentations(), QStringList("zrt.vxconfig"));
}

void TstManual::addPages() const
{
    QTest::addColumn<QString>("page");
    for (const QString &page : m_pages)
        QTest::newRow(qPrintable(page)) << page;
}

void TstManual::everyFileIsNamedInTheProject()
{
    QStringList named = m_named;
    named.sort();
    QCOMPARE(named, m_files);
}

void TstManual::everyFileOfTheProjectIsInTheCollection()
{
    for (const QString &name : m_named) {
        QVERIFY2(!contentsOf(name).isEmpty(), qPrintable(name));
        QVERIFY2(data(name) == contentsOf(name), qPrintable(name));
    }
}

void TstManual::pagesAreWellFormed_data()
{
    addPages();
}

void TstManual::pagesAreWellFormed()
{
    QFETCH(QString, page);
    QXmlStreamReader reader(contentsOf(page));
    QString title;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == QLatin1String("title"))
            title = reader.readElementText();
    }
    const QString fault = QStringLiteral("line %1: %2").arg(reader.lineNumber()).arg(reader.errorString());
    QVERIFY2(!reader.hasError(), qPrintable(fault));
    QVERIFY(!title.isEmpty());
    const QStringList anchors = anchorsOf(page);
    QCOMPARE(QSet<QString>(anchors.begin(), anchors.end()).size(), anchors.size());
}

QString TstManual::fault(const QString &page, const QString &link) const
{
    const QString target = link.section(QLatin1Char('#'), 0, 0);
    const QString place = link.section(QLatin1Char('#'), 1);
    const QString name = target.isEmpty() ? page : target;
    if (data(name).isEmpty())
        return QStringLiteral("%1: nothing is at \"%2\"").arg(page, link);
    if (!place.isEmpty() && !anchorsOf(name).contains(place))
        return QStringLiteral("%1: \"%2\" has no place \"%3\"").arg(page, name, place);
    return {};
}

void TstManual::pagesLeadSomewhere_data()
{
    addPages();
}

void TstManual::pagesLeadSomewhere()
{
    QFETCH(QString, page);
    const QString text = QString::fromUtf8(contentsOf(page));
    const QStringList links = captured(text, "\\s(?:href|src)=\"([^\"]*)\"");
    QVERIFY(!links.isEmpty());
    QStringList faults;
    for (const QString &link : links) {
        if (!isOfTheWeb(link))
            faults.append(fault(page, link));
    }
    faults.removeAll(QString());
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join('\n')));
}

void TstManual::picturesCanBeShown()
{
    for (const QString &name : m_files.filter(".png")) {
        const QImage picture = QImage::fromData(data(name), "PNG");
        QVERIFY2(!picture.isNull(), qPrintable(name));
        QVERIFY2(picture.width() <= 1160, qPrintable(name)); // the width of the main window
        const QString address = QStringLiteral("\"%1\"").arg(name);
        const bool used = std::any_of(m_pages.begin(), m_pages.end(), [&address](const QString &page) {
            return contentsOf(page).contains(address.toUtf8());
        });
        QVERIFY2(used, qPrintable(name));
    }
}

void TstManual::everyPageIsInTheContents()
{
    const QStringList found = chapters(*m_engine->contentModel());
    for (const QString &page : m_pages)
        QVERIFY2(found.contains(kFolder + page), qPrintable(page));
}

void TstManual::chaptersLeadToTheirPlaces()
{
    const QStringList found = chapters(*m_engine->contentModel());
    for (const QString &address : found) {
        QVERIFY2(address.startsWith(kFolder), qPrintable(address));
        const QString wrong = fault("contents", address.mid(kFolder.size()));
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    }
}

void TstManual::wordsOfTheIndexLeadToTheirPlaces()
{
    QVERIFY(!m_keywords.isEmpty());
    for (const QString &word : m_keywords) {
        const QList<QHelpLink> documents = m_engine->documentsForKeyword(word);
        QVERIFY2(!documents.isEmpty(), qPrintable(word));
        for (const QHelpLink &document : documents) {
            const QString wrong = fault(word, document.url.toString().mid(kFolder.size()));
            QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
        }
    }
}

QTEST_MAIN(TstManual)

#include "tst_manual.moc"
