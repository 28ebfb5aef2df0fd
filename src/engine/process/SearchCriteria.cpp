#include "engine/process/SearchCriteria.h"

SearchCriteria& TheSearchCriteria() {
    static SearchCriteria criteria;
    return criteria;
}
