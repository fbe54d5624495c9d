#pragma once

#include "store/ModelContainer.h"

#include <QTemporaryDir>

/// A store in a folder of its own, filled with distinct texts of one size.
class History
{
public:
    History(int count, qsizetype textSize);

    ModelContainer &container() { return *m_container; }
    ModelContext &context() { return m_container->mainContext(); }
    /// Closes the store; only its folder is left.
    void close() { m_container.reset(); }
    QString folder() const { return m_folder.path(); }

    /// A text of the size that no other call has given.
    static QByteArray distinctText(qsizetype size);

private:
    QTemporaryDir m_folder;
    std::unique_ptr<ModelContainer> m_container;
};
