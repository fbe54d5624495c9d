#include "ui/history/TemplateListModel.h"

#include "support/TemporaryStore.h"

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>

namespace
{

class TemplateList : public ::testing::Test
{
protected:
    std::shared_ptr<PasteTemplate> add(const char *name, qint64 sortOrder)
    {
        const auto added = std::make_shared<PasteTemplate>(QString::fromLatin1(name), QString(), QString(),
            QString(), QString(), QString(), sortOrder, false);
        m_store.context().insert(added);
        return added;
    }
    static QString names(const TemplateListModel &model)
    {
        QStringList list;
        for (int row = 0; row < model.rowCount(); ++row)
            list.append(model.index(row).data(TemplateListModel::Name).toString());
        return list.join(QLatin1Char(' '));
    }

    TemporaryStore m_store;
};

TEST_F(TemplateList, FollowsTheStoreInTheSortOrder)
{
    add("c", 30);
    add("a", 10);
    TemplateListModel model(m_store.context());
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(names(model), QStringLiteral("a c"));
    const auto b = add("b", 20);
    EXPECT_EQ(names(model), QStringLiteral("a b c"));
    m_store.context().remove(b);
    EXPECT_EQ(names(model), QStringLiteral("a c"));
}

TEST_F(TemplateList, EqualSortOrdersKeepTheOrderOfInsertion)
{
    add("first", 0);
    add("second", 0);
    add("zeroth", -1);
    const TemplateListModel model(m_store.context());
    EXPECT_EQ(names(model), QStringLiteral("zeroth first second"));
}

TEST_F(TemplateList, ViewsFindNamesByTheRole)
{
    add("a", 0);
    const TemplateListModel model(m_store.context());
    EXPECT_EQ(model.roleNames().value(TemplateListModel::Name), "name");
    EXPECT_EQ(model.index(0).data(), QStringLiteral("a"));
    EXPECT_FALSE(model.index(0).data(Qt::DecorationRole).isValid());
    EXPECT_FALSE(model.data(model.index(1), TemplateListModel::Name).isValid());
}

} // namespace
