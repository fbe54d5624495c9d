#include "store/ModelContainer.h"

#include "store/Schema.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace
{

constexpr auto OnlyTheOwner = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;

Result<Success> makeFolder(const QString &path)
{
    const QFileInfo folder(path);
    if (!folder.isDir()) {
        if (!QDir().mkpath(folder.path()) || !QDir().mkdir(path, OnlyTheOwner))
            return Error{QStringLiteral("cannot make the folder %1").arg(path)};
    }
    // A folder that somebody made with other permissions; another's folder stays as it is.
    (void)QFile::setPermissions(path, OnlyTheOwner);
    return Success();
}

} // namespace

QString ModelContainer::defaultFilePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
        QStringLiteral("/larkspool/larkspool.sqlite");
}

Result<std::unique_ptr<ModelContainer>> ModelContainer::open(const QString &filePath)
{
    const auto failure = [&filePath](const Error &error) {
        return Error{QStringLiteral("%1 (%2)").arg(error.description, filePath)};
    };
    if (const auto folder = makeFolder(QFileInfo(filePath).path()); !folder)
        return failure(folder.error());
    auto lock = StoreLock::acquire(QFileInfo(filePath).path() + QStringLiteral("/larkspool.lock"));
    if (!lock)
        return failure(lock.error());
    auto database = Database::open(filePath);
    if (!database)
        return failure(database.error());
    if (const auto prepared = schema::prepare(*database.value()); !prepared)
        return failure(prepared.error());
    auto container = std::unique_ptr<ModelContainer>(
        new ModelContainer(std::move(lock).value(), std::move(database).value()));
    if (const auto loaded = container->m_mainContext->load(); !loaded) {
        container->m_database->leaveFileAlone();
        return failure(loaded.error());
    }
    return container;
}

ModelContainer::ModelContainer(std::unique_ptr<StoreLock> lock, std::unique_ptr<Database> database)
    : m_lock(std::move(lock))
    , m_database(std::move(database))
    , m_mainContext(std::make_unique<ModelContext>(*m_database))
{
}

ModelContainer::~ModelContainer() = default;
