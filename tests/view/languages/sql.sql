-- 検索の結果を入れる表。don't drop it
CREATE TABLE search_hit (
    hit_id      NUMBER(10)      PRIMARY KEY,
    path        VARCHAR2(260)   NOT NULL,
    found_at    TIMESTAMP       DEFAULT SYSTIMESTAMP
);

/* 複数行の
   コメント: select 'x' from dual; */
create or replace procedure count_hits(p_word in varchar2) is
    l_total   pls_integer := 0;
    l_path    search_hit.path%TYPE;
    type path_list is table of varchar2(260);
begin
    for r in (select path, count(*) as n
                from search_hit
               where path like '%' || p_word || ' -- 検索'
               group by path
              having count(*) > 10) loop
        l_total := l_total + r.n; -- "quoted" end
        dbms_output.put_line(r.path || ': ' || to_char(r.n));
    end loop;
    if l_total = 0 then
        raise_application_error(-20001, 'it''s empty');
    end if;
exception
    when no_data_found then null;
end count_hits;
/
SELECT h.path, :most FROM search_hit h WHERE h.hit_id BETWEEN 1 AND 20;
