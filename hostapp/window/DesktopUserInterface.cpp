#include "hostapp/window/DesktopUserInterface.h"

#include "base/ReportableError.h"
#include "hostapp/window/OutputWords.h"
#include "hostapp/window/SiteActions.h"
#include "plugins/PlotixPlugIn/host/KTVBundle.h"
#include "plugins/PlotixPlugIn/host/PngImage.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPlainTextEdit>

namespace plotix {

namespace {

QMessageBox::Icon iconForStyle(KTVAlert::Style style)
{
    switch (style) {
    case KTVAlert::Style::Critical: return QMessageBox::Critical;
    case KTVAlert::Style::Informational: return QMessageBox::Information;
    case KTVAlert::Style::Default: break;
    }
    return QMessageBox::Warning;
}

constexpr int kMostLines = 12;       // shown without scrolling
constexpr int kMostLetters = 1000;   // likewise
constexpr int kLongTextWidth = 560;  // points

bool isLong(const QString& text)
{
    return text.count(QLatin1Char('\n')) >= kMostLines || text.size() > kMostLetters;
}

/// Puts the box's second text, a result of many lines, into an area that scrolls: the box would be higher than the
/// screen, and its button out of reach.
void letTextScroll(QMessageBox& box)
{
    auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"));
    if (!label)
        return;
    auto* text = new QPlainTextEdit(label->text(), &box);
    text->setObjectName(QStringLiteral("longText"));
    text->setAccessibleName(box.text());
    text->setReadOnly(true);
    text->setFrameShape(QFrame::NoFrame);
    text->setMinimumSize(kLongTextWidth, 14 * text->fontMetrics().height());
    box.layout()->replaceWidget(label, text);
    label->hide();  // the box goes on owning it
}

/// Where something of that size stands outside a rectangle, touching one of its edges.
QPoint placeAtEdge(const QSize& size, const QRect& rect, KTVRectEdge edge)
{
    switch (edge) {
    case KTVRectEdge::MinX: return rect.topLeft() - QPoint(size.width(), 0);
    case KTVRectEdge::MaxX: return rect.topLeft() + QPoint(rect.width(), 0);
    case KTVRectEdge::MaxY: return rect.topLeft() + QPoint(0, rect.height());
    case KTVRectEdge::MinY: break;
    }
    return rect.topLeft() - QPoint(0, size.height());
}

void fillBox(QMessageBox& box, const KTVAlert& alert)
{
    box.setIcon(iconForStyle(alert.style));
    box.setWindowTitle(QGuiApplication::applicationDisplayName());
    box.setTextFormat(Qt::PlainText);
    // Plug-ins give untranslated texts; the host translates them.
    const KTVBundle* bundle = KTVBundle::mainBundle();
    box.setText(bundle->localizedString(alert.messageText));
    box.setInformativeText(bundle->localizedString(alert.informativeText));
    box.setStandardButtons(QMessageBox::Ok);
    if (isLong(box.informativeText()))
        letTextScroll(box);
}

/// Plug-ins write where the panel says, so the panel gives them no place where a file of another kind would be lost. A
/// type that the program does not know is the plug-in's own affair.
std::optional<OutputProblem> problemOfSaving(const QString& path, const QStringList& types)
{
    std::optional<FileKind> kind;
    for (const QString& type : types)
        if (const auto known = kindWrittenAs(type); known && (!kind || hasEndingOf(*known, path)))
            kind = known;
    return kind ? problemOfWriting(*kind, path) : std::nullopt;
}

}  // namespace

void DesktopUserInterface::beginSheet(const KTVAlert& alert, QWidget* window, std::function<void()> completionHandler)
{
    auto* box = new QMessageBox(window ? window->window() : nullptr);
    fillBox(*box, alert);
    box->setAttribute(Qt::WA_DeleteOnClose);
    if (completionHandler)
        connect(box, &QDialog::finished, this, [handler = std::move(completionHandler)] { handler(); });
    box->open();  // window-modal: it blocks that window alone, and nothing without one
}

void DesktopUserInterface::runModal(const KTVAlert& alert)
{
    QMessageBox box(QApplication::activeWindow());
    fillBox(box, alert);
    box.setWindowModality(Qt::ApplicationModal);
    box.exec();
}

std::optional<QString> DesktopUserInterface::runSavePanel(const QStringList& allowedFileTypes)
{
    return askWhereToSave(allowedFileTypes, {});
}

std::optional<QString> DesktopUserInterface::askWhereToSave(const QStringList& allowedFileTypes, const QString& title)
{
    QFileDialog dialog(QApplication::activeWindow(), tr("Save"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    QStringList filters;
    for (const QString& type : allowedFileTypes)
        filters << tr("%1 files (*.%2)").arg(type.toUpper(), type);
    dialog.setNameFilters(filters);
    if (!allowedFileTypes.isEmpty())
        dialog.setDefaultSuffix(allowedFileTypes.first());
    if (!title.isEmpty())
        dialog.selectFile(fileNameFor(title, allowedFileTypes.value(0)));
    while (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) {
        const QString path = dialog.selectedFiles().first();
        const auto problem = problemOfSaving(path, allowedFileTypes);
        if (!problem)
            return path;
        runModal({tr("The file is not saved there"), outputText(*problem), KTVAlert::Style::Default});
        if (problem->reason == OutputProblem::Reason::WrongEnding)
            dialog.selectFile(path + QLatin1Char('.') + allowedFileTypes.first());  // which asks before replacing that
    }
    return std::nullopt;
}

void DesktopUserInterface::showSharingPicker(const QImage& image,
                                             const std::weak_ptr<KTVSharingPickerDelegate>& delegate, const QRect& rect,
                                             QWidget* view, KTVRectEdge preferredEdge)
{
    QMenu* menu = makeSharingMenu(image, this, m_sharedPicture, view);
    connect(menu, &QMenu::triggered, this, [delegate](const QAction* service) {
        if (const auto told = delegate.lock())
            told->sharingPickerDidChoose(service->text().remove(u'&'));
    });
    const QRect place = view ? QRect(view->mapToGlobal(rect.topLeft()), rect.size()) : QRect(QCursor::pos(), QSize());
    menu->popup(placeAtEdge(menu->sizeHint(), place, preferredEdge));
}

Qt::KeyboardModifiers DesktopUserInterface::modifierFlags() const
{
    return m_input.modifiers();
}

QString DesktopUserInterface::localizedDescription(const Date& date) const
{
    const QDateTime moment = QDateTime::fromMSecsSinceEpoch(qRound64(date.seconds * 1000));
    return QLocale().toString(moment, QLocale::LongFormat);
}

QMenu* makeSharingMenu(const QImage& image, KTVUserInterface* userInterface, SharedPicture& sharedPicture,
                       QWidget* parent)
{
    auto* menu = new QMenu(parent);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setToolTipsVisible(true);
    menu->addAction(DesktopUserInterface::tr("&Copy Image"),
                    [image] { QGuiApplication::clipboard()->setImage(image); });
    menu->addAction(DesktopUserInterface::tr("&Save Image…"), [image, userInterface] {
        const auto path = userInterface->runSavePanel({QStringLiteral("png")});
        if (!path)
            return;
        try {
            writeOutput(FileKind::Png, *path, pngOfImage(image));
        } catch (const OutputFailure& failure) {
            userInterface->runModal({DesktopUserInterface::tr("The image could not be saved"),
                                     outputText(failure.problem()), KTVAlert::Style::Critical});
        }
    });
    menu->addSeparator();
    const auto passOn = [&](const QString& text, void (SharedPicture::*way)(const QImage&), const QString& reason) {
        QAction* action = menu->addAction(text, [image, userInterface, &sharedPicture, way] {
            try {
                (sharedPicture.*way)(image);
            } catch (const ReportableError& error) {
                userInterface->runModal({DesktopUserInterface::tr("The picture could not be passed on"),
                                         error.message(), KTVAlert::Style::Critical});
            }
        });
        setUnavailableReason(action, reason);
    };
    passOn(DesktopUserInterface::tr("&Mail…"), &SharedPicture::mail, sharedPicture.mailUnavailable());
    passOn(DesktopUserInterface::tr("Open &With…"), &SharedPicture::openWith, sharedPicture.openUnavailable());
    return menu;
}

}  // namespace plotix
