#include "Q3Host.h"

int main(int argc, char **argv)
{
    return RunQuillo3(argc, argv);
}
