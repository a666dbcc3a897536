#pragma once

#include "hostapp/window/WorkProgress.h"

#include <QtWidgets/QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

/// Asks for a site on a server, and opens it: the server, who asks, and the site, which a list of those there helps to
/// find. What it was told last stands in it again, but for the password: the server, the user's
/// name and the site are among the program's settings. Main thread only.
namespace plotix {

class OpenServerDialog : public QDialog {
    Q_OBJECT
public:
    explicit OpenServerDialog(QWidget* parent = nullptr);

    /// As if its parts had been typed. Does nothing for what is no address.
    void choose(const QString& address);

    /// Waits for the server, with progress. True: the dialog is accepted. False: it says why not, and keeps what was
    /// typed.
    bool connectNow();

    QString siteFile() const { return m_siteFile; }  ///< this desk's file of the site, once it is accepted

    void accept() override { connectNow(); }

private:
    QString address() const;
    QString hostsAddress(const QString& site) const;
    void takePasted();
    bool askedAt(const QString& address, const QString& label,
                 const std::function<void(const WorkProgress& progress)>& work);
    void findSites();
    void say(const QString& words);
    void remember() const;

    QString m_siteFile;
    // All owned by the dialog.
    QLineEdit *m_server, *m_user, *m_password;
    QCheckBox* m_secure;
    QComboBox* m_site;
    QLabel* m_words;
};

/// The site's file after the dialog, or after the address alone where it needs no dialog; empty: cancelled.
QString siteFileFromServer(const QString& address, QWidget* parent);

}  // namespace plotix
