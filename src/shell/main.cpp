#include "shell/Application.h"

int main(int argc, char **argv)
{
    return runApplication(argc, argv);
}
