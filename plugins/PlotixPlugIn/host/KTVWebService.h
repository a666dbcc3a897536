#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include <memory>
#include <utility>

/// What the host's embedded web server and its plug-ins hand each other. Values; any thread.

/// A request, as far as plug-ins read it. The path is taken as it was sent, still percent-encoded.
struct KTVWebServiceRequest {
    QUrl url;
};

/// Bytes and their content type. Immutable; the server *shares* it until it has been sent.
class KTVHOST_EXPORT GCDWebServerDataResponse {
public:
    static std::shared_ptr<GCDWebServerDataResponse> responseWithData(QByteArray data, QString contentType)
    {
        return std::shared_ptr<GCDWebServerDataResponse>(
            new GCDWebServerDataResponse(std::move(data), std::move(contentType)));
    }

    const QByteArray& data() const { return m_data; }
    const QString& contentType() const { return m_contentType; }  ///< such as "image/png"

private:
    GCDWebServerDataResponse(QByteArray data, QString contentType)
        : m_data(std::move(data)), m_contentType(std::move(contentType))
    {
    }

    QByteArray m_data;
    QString m_contentType;
};

using GCDWebServerDataResponsePtr = std::shared_ptr<GCDWebServerDataResponse>;
