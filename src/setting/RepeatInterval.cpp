#include "setting/RepeatInterval.h"

RepeatInterval repeatInterval(int stored)
{
    if (stored <= 0)
        return {};
    if (stored <= 5)
        return {RepeatInterval::Unit::Seconds, stored * 10};
    return {RepeatInterval::Unit::Minutes, stored - 5};
}
