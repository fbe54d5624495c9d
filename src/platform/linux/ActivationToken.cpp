#include "platform/linux/ActivationToken.h"

#include <QtGlobal>

void offerActivationToken(const QString &token)
{
    constexpr const char *Variable = "XDG_ACTIVATION_TOKEN";
    if (token.isEmpty())
        qunsetenv(Variable);
    else
        qputenv(Variable, token.toUtf8());
}
