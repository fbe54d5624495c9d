#include "store/Seeding.h"

#include "base/Console.h"
#include "store/ModelContainer.h"

namespace
{

std::shared_ptr<ClipCategory> record(const ClipCategory::Default &row, qint64 sortOrder)
{
    return std::make_shared<ClipCategory>(row.name, row.colorHex, row.icon, sortOrder, true);
}

std::shared_ptr<PasteTemplate> record(const PasteTemplate::Default &row, qint64 sortOrder)
{
    return std::make_shared<PasteTemplate>(row.name, row.separator, row.itemPrefix, row.itemSuffix,
        row.wrapPrefix, row.wrapSuffix, sortOrder, true);
}

template<class Model>
void seed(ModelContainer *container, const QString &what)
{
    if (!container)
        return;
    ModelContext &context = container->mainContext();
    if (context.fetchCount<Model>() > 0)
        return;
    const auto &rows = Model::defaults();
    for (size_t i = 0; i < rows.size(); ++i)
        context.insert(record(rows[i], static_cast<qint64>(i)));
    // A failed save leaves the records waiting; the program works with them meanwhile.
    (void)context.save();
    consoleLine(QStringLiteral("[Larkspool] Seeded %1 default %2").arg(rows.size()).arg(what));
}

} // namespace

void seedDefaultCategories(ModelContainer *container)
{
    seed<ClipCategory>(container, QStringLiteral("categories"));
}

void seedDefaultTemplates(ModelContainer *container)
{
    seed<PasteTemplate>(container, QStringLiteral("templates"));
}
