#include "keyboard/key_records.h"

#define OSTREL_DEFINE_KEY(name)                                                                                        \
    WidgetRecord name = {};                                                                                            \
    TouchArea tA_##name = {};
OSTREL_KEY_RECORDS(OSTREL_DEFINE_KEY)
#undef OSTREL_DEFINE_KEY
