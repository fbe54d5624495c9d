#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

/// What SQLite alone needs for the same work: one table with the same columns, one prepared insertion, one
/// durable commit each, on the same kind of file.
class BareInsert
{
public:
    /// Fills the file with `count` rows of `textSize` bytes.
    BareInsert(const QString &filePath, int count, qsizetype textSize);
    ~BareInsert();
    BareInsert(const BareInsert &) = delete;
    BareInsert &operator=(const BareInsert &) = delete;

    void insertAndCommit(const QByteArray &text);

private:
    struct Handles;
    void insert(const QByteArray &text);
    std::unique_ptr<Handles> m_handles;
};
