// The touch panel's answers to the questions that evdev readers ask. Its samples come through the FIFO itself.
#include "simulator/shim/device.h"
#include "simulator/shim/program_memory.h"
#include "simulator/shim/requests.h"

#include <cerrno>
#include <cstddef>
#include <linux/input.h>

namespace ostrel {
namespace {

constexpr char NAME[] = "Ostrel touch panel";
constexpr int PANEL_WIDTH = 320;
constexpr int PANEL_HEIGHT = 240;

// Bit fields have the kernel's sizes: whole longs of the program's architecture.
constexpr size_t BITS_OF_A_LONG = 8 * sizeof(long);
template<unsigned HIGHEST>
struct Bits {
    unsigned long words[HIGHEST / BITS_OF_A_LONG + 1] = {};
    void set(unsigned bit) { words[bit / BITS_OF_A_LONG] |= 1UL << (bit % BITS_OF_A_LONG); }
};

// As much as the caller has room for; the result is the number of bytes, as drivers answer.
int give(void* argument, size_t room, const void* answer, size_t size) {
    const size_t part = size < room ? size : room;
    const int error = copyToProgram(argument, answer, part);
    return error != 0 ? error : static_cast<int>(part);
}

template<typename Answer>
int giveWhole(void* argument, const Answer& answer) {
    return copyToProgram(argument, &answer, sizeof answer);
}

int giveEventCodes(unsigned type, void* argument, size_t room) {
    Bits<EV_MAX> types;
    Bits<KEY_MAX> keys;
    Bits<ABS_MAX> axes;
    const Bits<KEY_MAX> none;
    switch (type) {
    case 0:
        types.set(EV_SYN);
        types.set(EV_KEY);
        types.set(EV_ABS);
        return give(argument, room, &types, sizeof types);
    case EV_KEY:
        keys.set(BTN_TOUCH);
        return give(argument, room, &keys, sizeof keys);
    case EV_ABS:
        axes.set(ABS_X);
        axes.set(ABS_Y);
        return give(argument, room, &axes, sizeof axes);
    case EV_REL:
    case EV_MSC:
    case EV_SW:
    case EV_LED:
    case EV_SND:
    case EV_FF:
        return give(argument, room, &none, sizeof(long));
    default:
        return -EINVAL;
    }
}

int giveAxis(unsigned axis, void* argument) {
    if (axis != ABS_X && axis != ABS_Y)
        return -EINVAL;
    input_absinfo info = {};
    info.value = axis == ABS_X ? sharedPage()->penX : sharedPage()->penY;
    info.maximum = axis == ABS_X ? PANEL_WIDTH - 1 : PANEL_HEIGHT - 1;
    return giveWhole(argument, info);
}

int giveProperties(void* argument, size_t room) {
    Bits<INPUT_PROP_MAX> properties;
    properties.set(INPUT_PROP_DIRECT);
    return give(argument, room, &properties, sizeof properties);
}

int giveHeldKeys(void* argument, size_t room) {
    Bits<KEY_MAX> held;
    if (sharedPage()->penDown != 0)
        held.set(BTN_TOUCH);
    return give(argument, room, &held, sizeof held);
}

} // namespace

int requestTouch(unsigned long request, void* argument) {
    constexpr unsigned FIRST_BITS = _IOC_NR(EVIOCGBIT(0, 0));
    constexpr unsigned FIRST_AXIS = _IOC_NR(EVIOCGABS(0));
    const unsigned number = _IOC_NR(request);
    const size_t room = _IOC_SIZE(request);
    if (_IOC_TYPE(request) != 'E')
        return -EINVAL;
    if (_IOC_DIR(request) == _IOC_WRITE)
        return number == _IOC_NR(EVIOCGRAB) || number == _IOC_NR(EVIOCSCLOCKID) ? 0 : -EINVAL;
    if (_IOC_DIR(request) != _IOC_READ)
        return -EINVAL;
    if (number >= FIRST_BITS && number <= FIRST_BITS + EV_MAX)
        return giveEventCodes(number - FIRST_BITS, argument, room);
    if (number >= FIRST_AXIS && number <= FIRST_AXIS + ABS_MAX)
        return giveAxis(number - FIRST_AXIS, argument);
    const input_id id = {BUS_HOST, 0, 0, 1};
    const int version = EV_VERSION;
    switch (number) {
    case _IOC_NR(EVIOCGVERSION):
        return giveWhole(argument, version);
    case _IOC_NR(EVIOCGID):
        return giveWhole(argument, id);
    case _IOC_NR(EVIOCGNAME(0)):
        return give(argument, room, NAME, sizeof NAME);
    case _IOC_NR(EVIOCGPHYS(0)):
    case _IOC_NR(EVIOCGUNIQ(0)):
        return -ENOENT;
    case _IOC_NR(EVIOCGPROP(0)):
        return giveProperties(argument, room);
    case _IOC_NR(EVIOCGKEY(0)):
        return giveHeldKeys(argument, room);
    default:
        return -EINVAL;
    }
}

} // namespace ostrel
