#pragma once

#include <QtWidgets/QWidget>

class QLabel;

/// The web address of a site: a link, and a button that copies it. Part of the status bar. Main thread only.
namespace plotix {

class WebAddressBar : public QWidget {
    Q_OBJECT
public:
    explicit WebAddressBar(QWidget* parent = nullptr);

    const QString& address() const { return m_address; }
    void setAddress(const QString& address);  ///< empty: shows nothing

    void copyAddress() const;  ///< to the clipboard

private:
    QString m_address;
    QLabel* m_link;  // owned by this widget
};

}  // namespace plotix
