#pragma once

#include "ui/history/TaskPool.h"

#include <QQuickAsyncImageProvider>

#include <memory>

/// Gives QML the desktop's icons of files: `image://fileicon/<path>`, the path percent-encoded. The side is
/// asked for in pixels. Nothing is shown where the icon theme has no icon.
///
/// What a file is, its name alone says: nothing of it is read. Whether it is a folder, the file system is
/// asked on another thread, and where it does not answer soon the file is taken for one that is none. The
/// icon theme is Qt's, which knows only the main thread: icons are looked up there, one at a time between
/// other events, each of them once.
class FileIconProvider : public QQuickAsyncImageProvider
{
public:
    /// Made on the main thread.
    FileIconProvider();
    ~FileIconProvider() override;

    QQuickImageResponse *requestImageResponse(const QString &id, const QSize &requestedSize) override;

private:
    class Theme;

    std::unique_ptr<Theme> m_theme;
    // It ends before the theme, which its tasks use.
    TaskPool m_pool;
};
