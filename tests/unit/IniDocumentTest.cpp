#include "base/IniDocument.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{

struct Reading {
    const char *text;
    const char *value; ///< null when there is none
};

class IniReading : public ::testing::TestWithParam<Reading>
{
};

TEST_P(IniReading, GivesTheValueOfKey)
{
    const auto value = IniDocument(GetParam().text).value("key");
    if (GetParam().value)
        EXPECT_EQ(value, QString::fromUtf8(GetParam().value));
    else
        EXPECT_FALSE(value);
}

INSTANTIATE_TEST_SUITE_P(Texts, IniReading,
    ::testing::Values(Reading{"", nullptr}, Reading{"[General]\nother=1\n", nullptr},
        Reading{"[General]\nkey=1\n", "1"}, Reading{"[General]\nkey=1", "1"}, Reading{"key=1\n", "1"},
        Reading{"[General]\r\nkey=1\r\n", "1"}, Reading{"[General]\n  key =  two words \n", "two words"},
        Reading{"[General]\nkey=\n", ""}, Reading{"[General]\nkey=1\nkey=2\n", "2"},
        Reading{"[Other]\nkey=1\n", nullptr},
        Reading{"[Other]\nkey=1\n[General]\nkey=2\n[Third]\nkey=3\n", "2"},
        Reading{"[General]\nkeys=1\nmykey=2\n", nullptr}, Reading{"[General]\nkey\n", nullptr},
        Reading{"[General]\nkey=#FF8C00\n", "#FF8C00"}, Reading{"[General]\nkey=1 ; a comment\n", "1"},
        Reading{"[General]\nkey=\"a;b\"\n", "a;b"},
        Reading{"[General]\nkey=\"say \\\"a\\\\b\\\"\"\n", "say \"a\\b\""},
        Reading{"[General]\nkey=\"a, b\"\n", "a, b"}, Reading{"[General]\nkey=a, b\n", nullptr},
        Reading{"[General]\nkey=@ByteArray(bytes)\n", "bytes"},
        Reading{"[General]\nkey=@Invalid()\n", nullptr}, Reading{"[General]\nkey=@@home\n", "@home"},
        Reading{"[General]\nkey={\"a\":1, \"b\":2}\n", "{\"a\":1, \"b\":2}"},
        Reading{"[General]\nkey=\"half", "half"}, Reading{"[General]\n[[[=\n=\nkey=1\n", "1"}));

struct Writing {
    const char *before;
    const char *after;
};

class IniWriting : public ::testing::TestWithParam<Writing>
{
};

TEST_P(IniWriting, ChangesTheLineOfTheKeyAlone)
{
    IniDocument document(GetParam().before);
    document.setValue("key", QStringLiteral("new"));
    EXPECT_EQ(document.text(), GetParam().after);
    EXPECT_EQ(document.value("key"), QStringLiteral("new"));
}

INSTANTIATE_TEST_SUITE_P(Texts, IniWriting,
    ::testing::Values(Writing{"", "[General]\nkey=new\n"}, Writing{"[General]\n", "[General]\nkey=new\n"},
        Writing{"[General]", "[General]\nkey=new\n"}, Writing{"[General]\nkey=old\n", "[General]\nkey=new\n"},
        Writing{"key=old", "key=new\n"},
        Writing{"; mine\n[General]\na=1\n\n", "; mine\n[General]\na=1\nkey=new\n\n"},
        Writing{"[General]\na={\"b\":1, \"c\":2}\n[Other]\nkey=1\n",
            "[General]\na={\"b\":1, \"c\":2}\nkey=new\n[Other]\nkey=1\n"},
        Writing{"[Other]\nkey=1", "[Other]\nkey=1\n[General]\nkey=new\n"},
        Writing{"[General]\nkey=1\nb=2\nkey=3\n", "[General]\nkey=1\nb=2\nkey=new\n"},
        Writing{"[[[=\nhalf a li", "[[[=\nhalf a li\n[General]\nkey=new\n"}));

/// Values of every kind that has to be quoted or escaped, and of some that have not.
class IniValue : public ::testing::TestWithParam<const char *>
{
protected:
    QString value() const { return QString::fromUtf8(GetParam()); }
    QString path() const { return m_folder.filePath(QStringLiteral("file.conf")); }

private:
    QTemporaryDir m_folder;
};

TEST_P(IniValue, IsReadByTheToolkitAsItWasWritten)
{
    IniDocument document;
    document.setValue("key", value());
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(document.text());
    file.close();
    EXPECT_EQ(QSettings(path(), QSettings::IniFormat).value(QStringLiteral("key")).toString(), value());
}

TEST_P(IniValue, IsReadAsTheToolkitWroteIt)
{
    {
        QSettings settings(path(), QSettings::IniFormat);
        settings.setValue(QStringLiteral("key"), value());
    }
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(IniDocument(file.readAll()).value("key"), value());
}

INSTANTIATE_TEST_SUITE_P(Values, IniValue,
    ::testing::Values("true", "500", "#FF8C00", "", " blank ", "a,b", "a;b", "a=b", "say \"a\"",
        "back\\slash", "two\nlines\tand\ttabs", "@home", "{\"keyCode\":40,\"modifiers\":768}",
        "größer ∀ 漢字", "/home/me/file"));

} // namespace
