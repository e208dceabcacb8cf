#include "Ctl.h"

int main(int argc, char **argv)
{
    return runCtl(argc, argv);
}
