#pragma once

#include "hostapp/document/SiteDocument.h"
#include "hostapp/print/Paper.h"
#include "hostapp/site/ViewReport.h"

#include <QtCore/QByteArray>
#include <QtCore/QVariantMap>

#include <memory>
#include <optional>

class KTVPlugInModule;

/// The printed report of a view that is stored in a site, made without a window. Free function; main thread only.
namespace plotix {

struct ReportRequest {
    std::shared_ptr<SiteDocument> document;
    QString view;                ///< its title; empty: the only one
    std::optional<Paper> paper;  ///< absent: what is usual in the user's country
    ReportForm form = ReportForm::Page;
    QVariantMap statistics = {};  ///< of the table, by name, instead of what the view has; see the option "statistics"
    QVariantMap clock = {};       ///< likewise: the option "clock"
};

/// Makes the view as it was left, waits for its records and answers the report as a PDF file's bytes. Stores nothing.
/// Throws ReportableError when there is no such view, or none that can be printed.
QByteArray pdfOfStoredReport(const ReportRequest& request, KTVPlugInModule* module);

}  // namespace plotix
