#include "rows.h"

QVector<const Row *> rows::scaling()
{
    return {&takeOneBytes, &takeOneQt,   &takeOne, &takeOneIniFormat, &takeOneGlib,
            &reader,       &plainReader, &writer,  &plainWriter,      &sorting,
            &childKeys,    &choosing,    &pass};
}
