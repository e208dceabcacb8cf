// geocode, reverse, lookup and position: the location services in a
// person's hands. They arrive with the location services themselves.

#include "Ctl.h"

void addLocationCommands(CtlCommandTable &)
{
}
