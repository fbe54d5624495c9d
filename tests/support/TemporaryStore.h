#pragma once

#include "store/ModelContainer.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

/// A store in a folder of its own that goes with the test.
class TemporaryStore
{
public:
    TemporaryStore() { open(); }

    QString filePath() const { return m_folder.filePath(QStringLiteral("larkspool/larkspool.sqlite")); }
    ModelContainer &container() { return *m_container; }
    ModelContext &context() { return m_container->mainContext(); }

    /// Closes the file and opens it again, as the next start of the program does.
    void reopen()
    {
        m_container.reset();
        open();
    }

private:
    void open()
    {
        auto opened = ModelContainer::open(filePath());
        ASSERT_TRUE(opened) << opened.error().description.toStdString();
        m_container = std::move(opened).value();
    }

    QTemporaryDir m_folder;
    std::unique_ptr<ModelContainer> m_container;
};
