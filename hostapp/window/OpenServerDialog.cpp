#include "hostapp/window/OpenServerDialog.h"

#include "base/ReportableError.h"
#include "hostapp/document/DeskFile.h"
#include "hostapp/document/ServerSites.h"
#include "hostapp/window/WorkProgress.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QSettings>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

namespace plotix {

namespace {

constexpr int kTextWidth = 440;                 // points
constexpr auto kSettings = "ServerOpenedLast";  // stored: never change, nor the names in it
constexpr auto kAnySite = "default/x";          // where the address of a server alone is needed

/// What an address says, by the fields of the dialog.
struct Parts {
    QString user, hosts, site;
    bool isSecure = false;
};

std::optional<Parts> partsOf(const QString& address)
{
    static const QRegularExpression form(
        QStringLiteral(R"(^clickhouse://(?:([^@/:]*)@)?([^@/?]+)(?:/([^?]*))?(?:\?secure=([01]))?$)"));
    const QRegularExpressionMatch match = form.match(address.trimmed());
    if (!match.hasMatch())
        return std::nullopt;
    return Parts{match.captured(1), match.captured(2), match.captured(3), match.captured(4) == QLatin1String("1")};
}

QLabel* wrapped(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(kTextWidth);
    return label;
}

}  // namespace

OpenServerDialog::OpenServerDialog(QWidget* parent)
    : QDialog(parent),
      m_server(new QLineEdit(this)),
      m_user(new QLineEdit(this)),
      m_password(new QLineEdit(this)),
      m_secure(new QCheckBox(tr("&Encrypted connection"), this)),
      m_site(new QComboBox(this)),
      m_words(wrapped({}, this))
{
    setWindowTitle(tr("Open from Server"));
    m_server->setPlaceholderText(tr("name or name:8123"));
    m_server->setToolTip(tr("A ClickHouse server; several names, with commas between, are replicas of it. An "
                            "address, clickhouse://…, may be pasted whole."));
    m_user->setPlaceholderText(tr("the server's usual one"));
    m_password->setEchoMode(QLineEdit::Password);
    m_password->setToolTip(tr("Is kept until the program ends, and stored nowhere."));
    m_secure->setToolTip(tr("HTTPS, with the server's certificate checked."));
    m_site->setEditable(true);
    m_site->setInsertPolicy(QComboBox::NoInsert);
    m_site->lineEdit()->setPlaceholderText(tr("database/site"));
    m_site->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_words->setObjectName(QStringLiteral("openServerWords"));
    m_words->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_words->hide();

    auto* find = new QPushButton(tr("&Find"), this);
    find->setToolTip(tr("List the sites of this server."));
    find->setAutoDefault(false);
    auto* site = new QHBoxLayout;
    site->addWidget(m_site);
    site->addWidget(find);
    auto* fields = new QFormLayout;
    fields->addRow(tr("&Server:"), m_server);
    fields->addRow(QString(), m_secure);
    fields->addRow(tr("&User:"), m_user);
    fields->addRow(tr("&Password:"), m_password);
    fields->addRow(tr("S&ite:"), site);
    qobject_cast<QLabel*>(fields->labelForField(site))->setBuddy(m_site);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    auto* open = buttons->addButton(tr("&Open"), QDialogButtonBox::AcceptRole);
    open->setDefault(true);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(wrapped(tr("Records, properties, limits and notes stay on the server, for everybody. Trends and "
                               "their looks are kept on this computer."),
                            this));
    rows->addLayout(fields);
    rows->addWidget(m_words);
    rows->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(find, &QPushButton::clicked, this, &OpenServerDialog::findSites);
    connect(m_server, &QLineEdit::editingFinished, this, &OpenServerDialog::takePasted);
    const auto allow = [this, open, find] {
        const bool hasServer = !m_server->text().trimmed().isEmpty();
        find->setEnabled(hasServer);
        open->setEnabled(hasServer && !m_site->currentText().trimmed().isEmpty());
    };
    connect(m_server, &QLineEdit::textChanged, this, allow);
    connect(m_site, &QComboBox::editTextChanged, this, allow);
    QSettings settings;
    settings.beginGroup(QLatin1String(kSettings));
    m_server->setText(settings.value(QStringLiteral("server")).toString());
    m_secure->setChecked(settings.value(QStringLiteral("secure")).toBool());
    m_user->setText(settings.value(QStringLiteral("user")).toString());
    m_site->setEditText(settings.value(QStringLiteral("site")).toString());
    allow();
}

void OpenServerDialog::choose(const QString& address)
{
    m_user->clear();
    m_password->clear();
    m_server->setText(address);
    takePasted();
    if (m_user->text().isEmpty())
        m_user->setText(enteredUser(address));
}

/// A whole address goes into all fields, a user before a host into theirs.
void OpenServerDialog::takePasted()
{
    QString text = m_server->text().trimmed();
    if (!text.startsWith(QLatin1String("clickhouse://")) && text.contains(QLatin1Char('@')))
        text.prepend(QLatin1String("clickhouse://"));
    const std::optional<Parts> parts = partsOf(text);
    if (!parts)
        return;
    m_server->setText(parts->hosts);
    if (!parts->user.isEmpty())
        m_user->setText(parts->user);
    if (parts->site.isEmpty())
        return;
    m_site->setEditText(parts->site);
    m_secure->setChecked(parts->isSecure);
}

QString OpenServerDialog::hostsAddress(const QString& site) const
{
    return QStringLiteral("clickhouse://%1/%2%3")
        .arg(m_server->text().remove(QLatin1Char(' ')), site,
             m_secure->isChecked() ? QStringLiteral("?secure=1") : QString());
}

QString OpenServerDialog::address() const
{
    return hostsAddress(m_site->currentText().trimmed());
}

/// Does the work as whom the dialog names. False: it failed, which is said; then everybody is asked as before.
bool OpenServerDialog::askedAt(const QString& address, const QString& label,
                               const std::function<void(const WorkProgress& progress)>& work)
{
    std::function<void()> takeBack;
    try {
        const QString password = m_password->text();
        takeBack = enterCredentials(address, m_user->text().trimmed(),
                                    password.isEmpty() ? std::nullopt : std::optional(password));
        workWithProgress(label, this, work);
        return true;
    } catch (const std::exception& error) {
        if (takeBack)
            takeBack();
        say(QString::fromUtf8(error.what()));
        return false;
    }
}

void OpenServerDialog::findSites()
{
    takePasted();
    const QString anywhere = hostsAddress(QLatin1String(kAnySite));
    std::vector<QString> sites;
    if (!askedAt(anywhere, tr("Asking the server…"), [&](const WorkProgress&) { sites = sitesOnServer(anywhere); }))
        return;
    const QString typed = m_site->currentText();
    m_site->clear();
    for (const QString& site : sites)
        m_site->addItem(site);
    const bool isOne = m_site->findText(typed) >= 0;
    m_site->setEditText(isOne || sites.empty() ? typed : sites.front());
    say(sites.empty() ? tr("There is no site on this server yet: “plotix store create %1” makes one.")
                            .arg(hostsAddress(QStringLiteral("default/plant")))
                      : QString());
    if (sites.size() > 1)
        m_site->showPopup();
}

bool OpenServerDialog::connectNow()
{
    takePasted();
    const QString wanted = address();
    QString file;
    const bool isDone =
        askedAt(wanted, tr("Opening %1…").arg(m_site->currentText().trimmed()), [&](const WorkProgress& progress) {
            const QString made = deskFileOf(wanted);
            if (progress(1))
                file = made;
        });
    if (!isDone || file.isEmpty())
        return false;
    m_siteFile = file;
    remember();
    QDialog::accept();
    return true;
}

void OpenServerDialog::say(const QString& words)
{
    m_words->setText(words);
    m_words->setVisible(!words.isEmpty());
}

void OpenServerDialog::remember() const
{
    QSettings settings;
    settings.beginGroup(QLatin1String(kSettings));
    settings.setValue(QStringLiteral("server"), m_server->text().trimmed());
    settings.setValue(QStringLiteral("secure"), m_secure->isChecked());
    settings.setValue(QStringLiteral("user"), m_user->text().trimmed());
    settings.setValue(QStringLiteral("site"), m_site->currentText().trimmed());
}

QString siteFileFromServer(const QString& address, QWidget* parent)
{
    OpenServerDialog dialog(parent);
    if (!address.isEmpty()) {
        dialog.choose(address);
        if (dialog.connectNow())
            return dialog.siteFile();
    }
    return dialog.exec() == QDialog::Accepted ? dialog.siteFile() : QString();
}

}  // namespace plotix
