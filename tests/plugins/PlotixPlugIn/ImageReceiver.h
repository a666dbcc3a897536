#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QObject>

#include <functional>
#include <vector>

/// A completion target that keeps the images it is sent.
class ImageReceiver : public QObject {
    Q_OBJECT
public:
    std::vector<QByteArray> images;
    std::function<void()> whenReceiving;  ///< runs with every image, if set

    Q_INVOKABLE void receiveImage(const QByteArray& pngData)
    {
        images.push_back(pngData);
        if (whenReceiving)
            whenReceiving();
    }
};
