#include "ui/SearchCriteria.h"

SearchCriteria& TheSearchCriteria() {
    static SearchCriteria criteria;
    return criteria;
}
