#include "bench/HistoryFixture.h"

#include <cstdlib>

namespace
{

template<class T>
T required(Result<T> result)
{
    if (!result) {
        qCritical("%s", qPrintable(result.error().description));
        std::abort();
    }
    return std::move(result).value();
}

} // namespace

History::History(int count, qsizetype textSize)
    : m_container(
          required(ModelContainer::open(m_folder.filePath(QStringLiteral("larkspool/larkspool.sqlite")))))
{
    for (int i = 0; i < count; ++i) {
        context().insert(std::make_shared<ClipboardItem>(distinctText(textSize), ClipboardItemType::Text,
            std::nullopt, std::nullopt, std::nullopt, false));
    }
    (void)required(context().save());
}

QByteArray History::distinctText(qsizetype size)
{
    static qint64 next = 0;
    return QByteArray::number(next++).rightJustified(12, '0') +
        QByteArray("the quick brown fox jumps over the lazy dog ").repeated(size / 44 + 1).left(size - 12);
}
