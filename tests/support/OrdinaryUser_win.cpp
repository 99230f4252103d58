#include "tests/support/OrdinaryUser.h"

OrdinaryUser::OrdinaryUser() = default;

OrdinaryUser::~OrdinaryUser() = default;
