#include "ui/history/PictureResponse.h"

void PictureResponse::Delivery::deliver(const QImage &picture)
{
    {
        const std::lock_guard lock(m_pictureMutex);
        m_picture = picture;
    }
    m_isDelivered = true;
    const std::lock_guard lock(m_responseMutex);
    if (m_response)
        Q_EMIT m_response->finished();
}

QImage PictureResponse::Delivery::picture() const
{
    const std::lock_guard lock(m_pictureMutex);
    return m_picture;
}

PictureResponse::PictureResponse()
{
    m_delivery->m_response = this;
}

PictureResponse::~PictureResponse()
{
    m_delivery->m_isWanted = false;
    const std::lock_guard lock(m_delivery->m_responseMutex);
    m_delivery->m_response = nullptr;
}

QQuickTextureFactory *PictureResponse::textureFactory() const
{
    const QImage picture = m_delivery->picture();
    return picture.isNull() ? nullptr : QQuickTextureFactory::textureFactoryForImage(picture);
}

void PictureResponse::cancel()
{
    // Qt waits for the picture all the same.
    m_delivery->m_isWanted = false;
}
