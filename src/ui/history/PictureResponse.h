#pragma once

#include <QImage>
#include <QQuickImageResponse>

#include <atomic>
#include <memory>
#include <mutex>

/// A picture that QML waits for. Whoever makes it holds the delivery, and need not know whether anybody still
/// waits.
class PictureResponse : public QQuickImageResponse
{
    Q_OBJECT

public:
    /// The way back to those who wait; any thread.
    class Delivery
    {
    public:
        /// Whether the picture is still of use.
        bool isWanted() const { return m_isWanted; }
        /// Whether it has come; those who connect to `finished` later are told nothing.
        bool isDelivered() const { return m_isDelivered; }
        /// Once. A null picture shows nothing, and is no error.
        void deliver(const QImage &picture);

    private:
        friend class PictureResponse;
        QImage picture() const;

        std::atomic_bool m_isWanted = true;
        std::atomic_bool m_isDelivered = false;
        mutable std::mutex m_pictureMutex;
        QImage m_picture;
        // Held while those who wait are told: they ask for the picture then.
        std::mutex m_responseMutex;
        PictureResponse *m_response = nullptr;
    };

    PictureResponse();
    ~PictureResponse() override;

    std::shared_ptr<Delivery> delivery() const { return m_delivery; }

    QQuickTextureFactory *textureFactory() const override;
    void cancel() override;

private:
    std::shared_ptr<Delivery> m_delivery = std::make_shared<Delivery>();
};
