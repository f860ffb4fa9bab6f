#include "RunProgram.h"
#include "joiner/Form4.h"

int main() { return kelvane::RunProgram<kelvane::Form4>("kelvane-joiner"); }
