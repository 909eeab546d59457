// The "IR8S Options" of the session form: which employees the IR8S return
// lists, by the flags the payroll sets on them. Excess CPF starts checked.
#pragma once

namespace iras {

struct IR8SOptions {
    bool excessCPF = true;
    bool overseasCPF = false;
    bool percentOrdWage = false;
};

}  // namespace iras
