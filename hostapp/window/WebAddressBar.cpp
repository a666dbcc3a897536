#include "hostapp/window/WebAddressBar.h"

#include <QtGui/QClipboard>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QToolButton>

namespace plotix {

WebAddressBar::WebAddressBar(QWidget* parent) : QWidget(parent), m_link(new QLabel(this))
{
    setObjectName(QStringLiteral("webAddressBar"));
    m_link->setObjectName(QStringLiteral("webAddress"));
    m_link->setTextFormat(Qt::RichText);
    m_link->setTextInteractionFlags(Qt::TextBrowserInteraction);
    m_link->setOpenExternalLinks(true);
    m_link->setAccessibleName(tr("Address on the web"));
    auto* copy = new QToolButton(this);
    copy->setObjectName(QStringLiteral("copyWebAddress"));
    copy->setText(tr("Copy Address"));
    connect(copy, &QToolButton::clicked, this, &WebAddressBar::copyAddress);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 0, 6, 0);
    row->addWidget(m_link);
    row->addWidget(copy);
    setAddress({});
}

void WebAddressBar::setAddress(const QString& address)
{
    m_address = address;
    const QString shown = address.toHtmlEscaped();
    m_link->setText(tr("On the web: %1").arg(QStringLiteral("<a href=\"%1\">%1</a>").arg(shown)));
    setVisible(!address.isEmpty());
}

void WebAddressBar::copyAddress() const
{
    QApplication::clipboard()->setText(m_address);
}

}  // namespace plotix
