# Which picture of the flag collection stands for which name of the catalogue.
set(flags
    Afghanistan:af Aland:ax Albania:al Algeria:dz American-Samoa:as Andorra:ad Angola:ao Argentina:ar
    Armenia:am Aruba:aw Australia:au Austria:at Azerbaijan:az Bahamas:bs Bahrain:bh Bangladesh:bd
    Barbados:bb Belarus:by Belgium:be Belize:bz Benin:bj Bhutan:bt Bolivia:bo Bosnia-and-Herzegovina:ba
    Botswana:bw Brazil:br Brunei:bn Bulgaria:bg Burkina-Faso:bf Burundi:bi Cambodia:kh Cameroon:cm Canada:ca
    Cape-Verde:cv Catalonia:_catalonia Chad:td Chile:cl China:cn Colombia:co Comoros:km
    Republic-of-the-Congo:cg Croatia:hr Cuba:cu Cyprus:cy Czech-Republic:cz Denmark:dk Djibouti:dj
    Dominica:dm Ecuador:ec Egypt:eg El-Salvador:sv Eritrea:er Estonia:ee Ethiopia:et Fiji:fj Finland:fi
    France:fr Gabon:ga Gambia:gm Germany:de Ghana:gh Greece:gr Greenland:gl Guatemala:gt
    Guinea:gn Haiti:ht Honduras:hn Hong-Kong:hk Hungary:hu Iceland:is India:in Indonesia:id Iran:ir Iraq:iq
    Ireland:ie Israel:il Jamaica:jm Japan:jp Jordan:jo Kazakhstan:kz Kenya:ke Kuwait:kw Latvia:lv
    Lebanon:lb Libya:ly Lithuania:lt Luxembourg:lu Macedonia:mk Malawi:mw Malaysia:my Malta:mt Mexico:mx
    Moldova:md Monaco:mc Mongolia:mn Montenegro:me Morocco:ma Mozambique:mz Myanmar:mm Nepal:np
    Netherlands:nl New-Zealand:nz Nicaragua:ni Niger:ne Nigeria:ng North-Korea:kp Norway:no Oman:om
    Pakistan:pk Palestine:ps Panama:pa Paraguay:py Peru:pe Philippines:ph Poland:pl Portugal:pt Qatar:qa
    Romania:ro Russia:ru Saudi-Arabia:sa Scotland:_scotland Senegal:sn Serbia:rs Singapore:sg Slovakia:sk
    Slovenia:si Somalia:so South-Africa:za South-Korea:kr Spain:es Sri-Lanka:lk Sudan:sd Sweden:se
    Switzerland:ch Syria:sy Taiwan:tw Tajikistan:tj Thailand:th Turkey:tr UK:gb USA:us United-States:us
    Ukraine:ua Uruguay:uy Uzbekistan:uz Venezuela:ve Vietnam:vn Wales:_wales Zambia:zm Zimbabwe:zw)
