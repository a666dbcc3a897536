#pragma once

#include "plugins/PlotixPlugIn/host/KTVBundle.h"
#include "plugins/PlotixPlugIn/host/KTVCoder.h"
#include "plugins/PlotixPlugIn/host/KTVConverter.h"
#include "plugins/PlotixPlugIn/host/KTVMessageViewController.h"
#include "plugins/PlotixPlugIn/host/KTVNaturalLanguageDateCreator.h"

#include <QtGui/QColor>

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <limits>
#include <memory>

/// What every host must do, written once: the tests of this folder run on each host that is listed here.
///
/// A host under test is new for each test and holds one agent with the properties "Air Temperature" (degC) and
/// "Pressure" (hPa), in that order, and the records below. Main thread only.
namespace contract {

/// Times and values of the records. An invalid snapshot stands where a value is a NaN.
inline constexpr double kFirstTime = 1'700'000'000;
inline constexpr double kNoValue = std::numeric_limits<double>::quiet_NaN();
inline constexpr std::array kTimes{kFirstTime, kFirstTime + 60, kFirstTime + 120.5, kFirstTime + 180};
inline constexpr std::array kTemperatures{20.1, kNoValue, -0.0, 1.0 / 3};
inline constexpr std::array kPressures{1013.25, 1012.0, 1011.5, 1010.0};

class HostUnderTest {
public:
    virtual ~HostUnderTest() = default;

    virtual KTVAgentPtr agent() = 0;

    /// Sets the colour of one of the agent's properties, as the user of the host does.
    virtual void setColor(const QString& propertyName, const QColor& color) = 0;

    /// Writes an archive and reads it again.
    virtual void archive(const std::function<void(KTVEncoder&)>& write,
                         const std::function<void(KTVDecoder&)>& read) = 0;

    virtual std::unique_ptr<KTVMessageViewController> makeMessageViewController() = 0;
    virtual const KTVNaturalLanguageDateCreator& quickRanges() = 0;
    /// The same without any records anywhere.
    virtual const KTVNaturalLanguageDateCreator& quickRangesWithoutRecords() = 0;
    virtual const KTVConverter& converter() = 0;
    virtual const KTVBundle& bundle() = 0;
};

using MakeHost = std::unique_ptr<HostUnderTest> (*)();
std::unique_ptr<HostUnderTest> makeFakeHost();
std::unique_ptr<HostUnderTest> makeSiteHost();  ///< the stand-alone host: document, archive, units

struct HostRow {
    const char* name;
    MakeHost make;
};

/// The fixture of all contract tests.
class HostContract : public testing::TestWithParam<HostRow> {
protected:
    /// What the completion handler was called with, and how often.
    struct Answer {
        KTVRecordDictionaryPtr records;
        std::optional<KTVError> error;
        int completions = 0;
    };

    KTVPropertyPtr property(const char* key) { return host->agent()->properties().objectForKey(QLatin1String(key)); }
    KTVPropertyPtr temperature() { return property("airTemperature"); }

    /// Fetches and waits for the answer.
    Answer fetch(const std::optional<KTVPropertyList>& properties, plotix::OptionalDate from, plotix::OptionalDate to);
    KTVRecordDictionaryPtr fetchEverything();

    std::unique_ptr<HostUnderTest> host = GetParam().make();
};

}  // namespace contract
