#pragma once

#include "plugins/PlotixPlugIn/host/KTVBundle.h"
#include "plugins/PlotixPlugIn/host/KTVHelpManager.h"
#include "tests/support/fakehost/CallLog.h"

#include <map>

/// The fake host's resources and its help.
namespace fakehost {

/// Texts are their keys until a translation is set; images are those a test puts in. Main thread only.
class FakeBundle : public KTVBundle {
public:
    QString localizedString(const QString& key) const override;
    QImage imageNamed(const QString& name) const override;
    QString executableName() const override { return QStringLiteral("fakehost"); }

    void translate(const QString& key, const QString& text) { m_translations[key] = text; }
    void speakGerman();  ///< Cancel → Abbrechen, Refresh → Aktualisieren
    void speakEnglish() { m_translations.clear(); }
    void setImage(const QString& name, const QImage& image) { m_images[name] = image; }

private:
    std::map<QString, QString> m_translations;
    std::map<QString, QImage> m_images;
};

/// Logs "helpManager.openHelpAnchor trend" and opens nothing. Main thread only.
class FakeHelpManager : public KTVHelpManager {
public:
    explicit FakeHelpManager(CallLog* log) : m_log(log) {}
    void openHelpAnchor(const QString& anchor) override;

private:
    CallLog* m_log;  // borrowed
};

}  // namespace fakehost
