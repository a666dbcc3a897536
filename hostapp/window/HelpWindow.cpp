#include "hostapp/window/HelpWindow.h"

#include "hostapp/core/Localization.h"
#include "hostapp/window/ListRowDelegate.h"

#include <QtCore/QFile>
#include <QtGui/QShortcut>
#include <QtGui/QTextDocument>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTextBrowser>
#include <QtWidgets/QVBoxLayout>

// Outside the namespace, where the macro's function lives: a static library's resources join the program only when
// somebody names them.
static void joinHelpResources()
{
    Q_INIT_RESOURCE(help);
}

namespace plotix {

namespace {

struct Page {
    const char* anchor;  // plug-ins and links name pages by it: never change
    const char* title;
};

constexpr Page kPages[] = {
    {"start", QT_TRANSLATE_NOOP("plotix::HelpWindow", "Getting Started")},
    {"trend", QT_TRANSLATE_NOOP("plotix::HelpWindow", "Trends")},
    {"dates", QT_TRANSLATE_NOOP("plotix::HelpWindow", "Date Ranges")},
    {"properties", QT_TRANSLATE_NOOP("plotix::HelpWindow", "Properties and Units")},
    {"importing", QT_TRANSLATE_NOOP("plotix::HelpWindow", "Importing")},
    {"recording", QT_TRANSLATE_NOOP("plotix::HelpWindow", "Recording This Computer")},
    {"following", QT_TRANSLATE_NOOP("plotix::HelpWindow", "Following")},
    {"exporting", QT_TRANSLATE_NOOP("plotix::HelpWindow", "Exporting and Printing")},
    {"web", QT_TRANSLATE_NOOP("plotix::HelpWindow", "Web")},
    {"commandline", QT_TRANSLATE_NOOP("plotix::HelpWindow", "Command Line")},
};

int rowOf(const QString& anchor)
{
    const qsizetype row = helpAnchors().indexOf(anchor);
    return row < 0 ? 0 : static_cast<int>(row);
}

QString pageIn(const QString& language, const char* anchor)
{
    QFile file(QStringLiteral(":/plotix/help/%1/%2.html").arg(language, QLatin1String(anchor)));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace

QStringList helpAnchors()
{
    QStringList anchors;
    for (const Page& page : kPages)
        anchors << QLatin1String(page.anchor);
    return anchors;
}

QString helpPage(const QString& anchor)
{
    joinHelpResources();
    const char* page = kPages[rowOf(anchor)].anchor;
    const QString text = pageIn(installedLanguage(), page);
    return text.isEmpty() ? pageIn(QStringLiteral("en"), page) : text;
}

HelpWindow::HelpWindow(QWidget* parent)
    : QDialog(parent),
      m_contents(new QListWidget(this)),
      m_browser(new QTextBrowser(this)),
      m_search(new QLineEdit(this)),
      m_outcome(new QLabel(this))
{
    setWindowTitle(tr("Plotix Help"));
    setWindowFlag(Qt::WindowMinMaxButtonsHint);
    setAttribute(Qt::WA_QuitOnClose, false);  // the program ends when its sites are closed, whether help is open or not
    resize(820, 600);
    buildContents();
    m_browser->setAccessibleName(tr("Help text"));
    m_browser->setFrameShape(QFrame::NoFrame);
    m_browser->setOpenLinks(false);
    m_browser->document()->setDocumentMargin(16);
    m_search->setPlaceholderText(tr("Find in page"));
    m_search->setAccessibleName(tr("Find in page"));
    m_search->setClearButtonEnabled(true);
    m_search->setMinimumWidth(240);
    auto* searchRow = new QHBoxLayout;
    searchRow->addWidget(m_outcome, 1, Qt::AlignRight | Qt::AlignVCenter);
    searchRow->addWidget(m_search);
    auto* parts = new QSplitter(this);
    parts->addWidget(m_contents);
    parts->addWidget(m_browser);
    parts->setStretchFactor(1, 1);
    parts->setChildrenCollapsible(false);
    parts->setSizes({210, 610});
    auto* column = new QVBoxLayout(this);
    column->addLayout(searchRow);
    column->addWidget(parts, 1);
    buildKeys();
}

void HelpWindow::buildContents()
{
    m_contents->setAccessibleName(tr("Contents"));
    m_contents->setFrameShape(QFrame::NoFrame);
    m_contents->setItemDelegate(new ListRowDelegate(m_contents));
    for (const Page& page : kPages)
        m_contents->addItem(tr(page.title));
    connect(m_contents, &QListWidget::currentRowChanged, this, &HelpWindow::loadRow);
}

void HelpWindow::buildKeys()
{
    connect(m_browser, &QTextBrowser::anchorClicked, this, [this](const QUrl& url) { showPage(url.path()); });
    const auto findNext = [this] { find(m_search->text()); };
    connect(m_search, &QLineEdit::returnPressed, this, findNext);
    connect(m_search, &QLineEdit::textChanged, this, [this, findNext] {
        QTextCursor cursor = m_browser->textCursor();
        cursor.setPosition(cursor.selectionStart());  // a longer text may still match at the same place
        m_browser->setTextCursor(cursor);
        findNext();
    });
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, m_search, [this] {
        m_search->setFocus();
        m_search->selectAll();
    });
    connect(new QShortcut(QKeySequence(Qt::Key_F3), this), &QShortcut::activated, this, findNext);
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_W), this), &QShortcut::activated, this, &QWidget::close);
}

void HelpWindow::loadRow(int row)
{
    m_browser->setHtml(helpPage(helpAnchors().value(row)));
    m_outcome->clear();
}

void HelpWindow::showPage(const QString& anchor)
{
    if (m_contents->currentRow() == rowOf(anchor))
        loadRow(m_contents->currentRow());
    m_contents->setCurrentRow(rowOf(anchor));
    show();
    raise();
    activateWindow();
    m_browser->setFocus();
}

QString HelpWindow::shownAnchor() const
{
    return helpAnchors().value(m_contents->currentRow());
}

QString HelpWindow::plainText() const
{
    return m_browser->toPlainText();
}

bool HelpWindow::find(const QString& text)
{
    bool found = m_browser->find(text);
    if (!found && !text.isEmpty()) {
        m_browser->moveCursor(QTextCursor::Start);
        found = m_browser->find(text);
    }
    m_outcome->setText(found || text.isEmpty() ? QString() : tr("Not on this page"));
    return found;
}

HelpManager::~HelpManager()
{
    delete m_window;
}

void HelpManager::openHelpAnchor(const QString& anchor)
{
    if (!m_window)
        m_window = new HelpWindow;
    m_window->showPage(anchor);
}

}  // namespace plotix
